#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/network/URLSession.h"

class QNetworkAccessManager;

namespace vantrel::linuxdesktop {

/// One request with its redirects, up to its reply. Network thread.
class URLExchange final : public QObject {
  public:
    /// Called once.
    using Ended = std::function<void(const URLExchange*, URLReply)>;

    URLExchange(std::shared_ptr<QNetworkAccessManager> network, const QUrl& url, const URLRequest& request,
                Ended ended);

    void start();
    void cancel();

    /// Whether it ended while the server might still be sending.
    bool wasCutOff() const { return cutOff_; }

  private:
    void send();
    void follow();
    void connectReply();
    void takeBytes();
    void replyFinished();
    void fail(std::string_view text);
    void end(URLReply reply);
    bool isCutShort() const;

    struct LaterDeleter {
        void operator()(QNetworkReply* reply) const { reply->deleteLater(); }
    };

    const std::shared_ptr<QNetworkAccessManager> network_;
    QUrl url_;
    URLRequest request_;
    Ended ended_;
    std::unique_ptr<QNetworkReply, LaterDeleter> reply_;
    QTimer idle_;
    QByteArray bytes_;
    int redirects_ = 0;
    bool cutOff_ = false;
};

}  // namespace vantrel::linuxdesktop
