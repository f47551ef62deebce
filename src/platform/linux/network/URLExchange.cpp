#include "platform/linux/network/URLExchange.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/linux/network/NetworkErrorText.h"
#include "platform/linux/network/OneTimeBody.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr qsizetype longestBody = qsizetype{64} << 20;
constexpr int mostRedirects = 16;
// Lower values are interim replies, such as 103 Early Hints, or no valid status.
constexpr int firstFinalStatus = 200;

int milliseconds(double seconds) {
    const double value = std::ceil(seconds * 1000);
    if (!(value > 0)) return 0;
    return value < std::numeric_limits<int>::max() ? static_cast<int>(value) : std::numeric_limits<int>::max();
}

QNetworkRequest networkRequest(const QUrl& url, const URLRequest& request) {
    QNetworkRequest made(url);
    made.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    made.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    made.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    made.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // Shorter than servers usually keep idle connections, so that no request meets a connection that is just being
    // closed.
    made.setAttribute(QNetworkRequest::ConnectionCacheExpiryTimeoutSecondsAttribute, 2);
    // Qt 6.4 loses the end of large bodies that it decompresses itself.
    made.setRawHeader("Accept-Encoding", "identity");
    // Redirects are followed here, because the contract says what happens to method and body.
    made.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    for (const auto& [name, value] : request.headers) {
        made.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    }
    return made;
}

std::optional<int> statusOf(const QNetworkReply& reply) {
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid()) return std::nullopt;
    return status.toInt();
}

bool isRedirect(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

}  // namespace

URLExchange::URLExchange(std::shared_ptr<QNetworkAccessManager> network, const QUrl& url, const URLRequest& request,
                         Ended ended)
    : network_(std::move(network)), url_(url), request_(request), ended_(std::move(ended)) {
    idle_.setSingleShot(true);
    // A coarse timer may fire 5 % too early.
    idle_.setTimerType(Qt::PreciseTimer);
    idle_.setInterval(milliseconds(request_.timeoutInterval));
    QObject::connect(&idle_, &QTimer::timeout, this, [this] { fail(timeOutText); });
}

void URLExchange::start() {
    send();
}

void URLExchange::cancel() {
    fail(cancelledText);
}

void URLExchange::send() {
    bytes_.clear();
    const QByteArray bytes = request_.body ? QByteArray::fromStdString(*request_.body) : QByteArray();
    QNetworkRequest made = networkRequest(url_, request_);
    // Set even for an empty body: the body that cannot be rewound is what keeps Qt from sending the request again.
    made.setHeader(QNetworkRequest::ContentLengthHeader, bytes.size());
    made.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    auto body = std::make_unique<OneTimeBody>(bytes);
    reply_.reset(network_->sendCustomRequest(made, QByteArray::fromStdString(request_.method), body.get()));
    // It is read until the reply has finished, and is destroyed with it.
    body.release()->setParent(reply_.get());
    connectReply();
    idle_.start();
}

void URLExchange::connectReply() {
    QNetworkReply* reply = reply_.get();
    QObject::connect(reply, &QNetworkReply::metaDataChanged, this, [this] { idle_.start(); });
    QObject::connect(reply, &QNetworkReply::uploadProgress, this, [this] { idle_.start(); });
    QObject::connect(reply, &QNetworkReply::readyRead, this, [this] { takeBytes(); });
    QObject::connect(reply, &QNetworkReply::finished, this, [this] { replyFinished(); });
}

void URLExchange::takeBytes() {
    idle_.start();
    if (bytes_.size() + reply_->bytesAvailable() > longestBody) {
        fail(tooLargeText);
        return;
    }
    bytes_ += reply_->readAll();
}

void URLExchange::replyFinished() {
    takeBytes();
    if (!reply_) return;
    const std::optional<int> status = statusOf(*reply_);
    const QNetworkReply::NetworkError error = reply_->error();
    const bool redirects = status && isRedirect(*status) && reply_->hasRawHeader("Location");
    // Qt would send the request again for a 307 or 308, or if the body ends with the connection. It would then fail
    // although everything has arrived.
    const bool endsWithConnection =
        status && !reply_->hasRawHeader("Content-Length") && !reply_->hasRawHeader("Transfer-Encoding");
    const bool wouldRepeat = (redirects || endsWithConnection) && error == QNetworkReply::ContentReSendError;
    if (error != QNetworkReply::NoError && !wouldRepeat && !(status && isHTTPStatus(error))) {
        fail(networkErrorText(error, reply_->errorString()));
    } else if (status && *status < firstFinalStatus) {
        fail(unreadableReplyText);
    } else if (isCutShort()) {
        fail(connectionLostText);
    } else if (redirects) {
        follow();
    } else {
        URLReply reply;
        reply.statusCode = status;
        if (!bytes_.isEmpty()) reply.data = bytes_.toStdString();
        end(std::move(reply));
    }
}

// Qt takes a closed connection for the end of the body, whatever length was announced.
bool URLExchange::isCutShort() const {
    const int status = statusOf(*reply_).value_or(0);
    if (request_.method == "HEAD" || status == 204 || status == 304) return false;
    bool announced = false;
    const qlonglong length = reply_->rawHeader("Content-Length").toLongLong(&announced);
    return announced && !reply_->hasRawHeader("Transfer-Encoding") && bytes_.size() < length;
}

void URLExchange::follow() {
    const int status = statusOf(*reply_).value_or(0);
    const QUrl target = url_.resolved(QUrl::fromEncoded(reply_->rawHeader("Location")));
    const QString scheme = target.scheme();
    if (++redirects_ > mostRedirects) {
        fail(tooManyRedirectsText);
    } else if ((scheme != "http" && scheme != "https") || target.host().isEmpty()) {
        fail(unsupportedURLText);
    } else if (scheme == "http" && url_.scheme() == "https") {
        fail(insecureRedirectText);
    } else {
        const bool becomesGet = status == 303 ? request_.method != "HEAD" : status < 303 && request_.method == "POST";
        if (becomesGet) {
            request_.method = "GET";
            request_.body.reset();
            std::erase_if(request_.headers, [](const auto& header) {
                return QByteArray::fromStdString(header.first).compare("Content-Type", Qt::CaseInsensitive) == 0;
            });
        }
        url_ = target;
        reply_->disconnect(this);
        send();
    }
}

void URLExchange::fail(std::string_view text) {
    URLReply reply;
    reply.error = PlatformError{std::string(text)};
    end(std::move(reply));
}

void URLExchange::end(URLReply reply) {
    idle_.stop();
    if (reply_) {
        reply_->disconnect(this);
        if (reply_->isRunning()) {
            cutOff_ = true;
            reply_->abort();
        }
        reply_.reset();
    }
    const Ended ended = std::exchange(ended_, nullptr);
    if (ended) ended(this, std::move(reply));
}

}  // namespace vantrel::linuxdesktop
