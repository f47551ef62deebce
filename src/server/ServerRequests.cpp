#include "server/ServerRequests.h"

#include <utility>

namespace vantrel {

std::optional<URLRequest> ServerRequests::request(const std::string& address, const std::string& method,
                                                  double timeoutSeconds) const {
    auto url = urls_.form(address);
    if (!url) return std::nullopt;
    URLRequest request;
    request.url = *std::move(url);
    request.timeoutInterval = timeoutSeconds;
    request.method = method;
    return request;
}

bool ServerRequests::attach(URLRequest& request, const JSONObject& body) const {
    auto bytes = json_.serialise(body);
    if (!bytes) return false;
    request.body = *std::move(bytes);
    request.headers.emplace_back("Content-Type", "application/json");
    return true;
}

void ServerRequests::send(URLRequest request, URLSession::Completion completion) const {
    session_.dataTask(std::move(request), std::move(completion));
}

void ServerRequests::sendAndWait(URLRequest request, double waitSeconds, URLSession::Completion completion) const {
    const auto done = dispatch_.makeSemaphore(0);
    session_.dataTask(std::move(request), [done, completion = std::move(completion)](URLReply reply) {
        completion(std::move(reply));
        done->signal();
    });
    done->wait(waitSeconds);
}

std::optional<JSONObject> ServerRequests::object(const URLReply& reply) const {
    if (!reply.data) return std::nullopt;
    auto value = json_.parse(*reply.data);
    if (!value) return std::nullopt;
    auto* object = std::get_if<JSONObject>(&value->value);
    if (object == nullptr) return std::nullopt;
    return std::move(*object);
}

}  // namespace vantrel
