#pragma once

#include <QObject>
#include <list>
#include <memory>

#include "platform/linux/network/NetworkManagers.h"
#include "platform/network/URLSession.h"

class QNetworkAccessManager;

namespace vantrel::linuxdesktop {

class SerialQueue;
class URLExchange;

/// The part of the URL session that lives on the network thread. Created elsewhere and moved there.
class NetworkWorker final : public QObject {
  public:
    explicit NetworkWorker(SerialQueue& completions);
    ~NetworkWorker() override;

    void start(const URLRequest& request, URLSession::Completion completion);

    /// Fails all requests under way and destroys everything that belongs to the thread.
    void stop();

  private:
    void finish(const URLExchange* exchange, URLReply reply, const URLSession::Completion& completion);
    void deliver(const URLSession::Completion& completion, URLReply reply);

    SerialQueue& completions_;
    NetworkManagers managers_;
    std::shared_ptr<QNetworkAccessManager> network_;
    std::list<std::unique_ptr<URLExchange>> exchanges_;
};

}  // namespace vantrel::linuxdesktop
