#include "platform/linux/network/NetworkWorker.h"

#include <algorithm>
#include <utility>

#include "platform/linux/network/NetworkErrorText.h"
#include "platform/linux/network/URLExchange.h"
#include "platform/linux/threads/SerialQueue.h"

namespace vantrel::linuxdesktop {

namespace {

bool isSupported(const std::string& address) {
    std::string scheme = address.substr(0, std::min(address.find(':'), address.size()));
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return (scheme == "http" || scheme == "https") && scheme.size() < address.size();
}

URLReply failure(std::string_view text) {
    URLReply reply;
    reply.error = PlatformError{std::string(text)};
    return reply;
}

}  // namespace

NetworkWorker::NetworkWorker(SerialQueue& completions) : completions_(completions) {}

NetworkWorker::~NetworkWorker() = default;

void NetworkWorker::start(const URLRequest& request, URLSession::Completion completion) {
    if (!isSupported(request.url.absoluteString)) {
        deliver(completion, failure(unsupportedURLText));
        return;
    }
    const QUrl url(QString::fromStdString(request.url.absoluteString), QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) {
        deliver(completion, failure(badURLText));
        return;
    }
    if (!network_) network_ = managers_.make();
    auto exchange = std::make_unique<URLExchange>(
        network_, url, request, [this, completion = std::move(completion)](const URLExchange* ended, URLReply reply) {
            finish(ended, std::move(reply), completion);
        });
    URLExchange& started = *exchange;
    exchanges_.push_back(std::move(exchange));
    started.start();
}

void NetworkWorker::finish(const URLExchange* exchange, URLReply reply, const URLSession::Completion& completion) {
    deliver(completion, std::move(reply));
    // The manager's HTTP thread may keep reading what the server sends and do nothing else. Exchanges under way keep
    // the manager until they end.
    if (exchange->wasCutOff()) network_.reset();
    const auto found = std::find_if(exchanges_.begin(), exchanges_.end(),
                                    [exchange](const auto& owned) { return owned.get() == exchange; });
    if (found == exchanges_.end()) return;
    // The exchange is still on the stack.
    found->release()->deleteLater();
    exchanges_.erase(found);
}

void NetworkWorker::deliver(const URLSession::Completion& completion, URLReply reply) {
    completions_.async([completion, reply = std::move(reply)]() mutable { completion(std::move(reply)); });
}

void NetworkWorker::stop() {
    while (!exchanges_.empty()) exchanges_.front()->cancel();
    network_.reset();
}

}  // namespace vantrel::linuxdesktop
