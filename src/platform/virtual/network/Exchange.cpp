#include "platform/virtual/network/Exchange.h"

#include <algorithm>
#include <limits>

#include "platform/portable/URLComponents.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel::virtualmac {

namespace {

constexpr double forever = std::numeric_limits<double>::infinity();

std::string lowerCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// Adds up the arrivals until one comes too late.
class Arrivals {
  public:
    explicit Arrivals(double timeout) {
        if (timeout > 0) timeout_ = timeout;
    }

    /// Something arrives after `pause` seconds. Without bytes it does not end the idle time.
    bool add(double pause, bool hasBytes = true) {
        if (late_) return false;
        const double idle = idle_ + std::max(pause, 0.0);
        late_ = idle > timeout_;
        time_ += (late_ ? timeout_ : idle) - idle_;
        idle_ = hasBytes ? 0 : idle;
        return !late_;
    }

    Outcome end(URLReply reply) const { return {time_, late_ ? failure(timedOutText) : std::move(reply)}; }

  private:
    double timeout_ = forever;
    double time_ = 0;
    double idle_ = 0;
    bool late_ = false;
};

URLReply received(std::optional<int> status, std::string data) {
    URLReply reply;
    reply.statusCode = status;
    if (!data.empty()) reply.data = std::move(data);
    return reply;
}

}  // namespace

URLReply failure(std::string_view text) {
    URLReply reply;
    reply.error = PlatformError{repairedUTF8(text)};
    return reply;
}

Outcome outcome(const NetworkAnswer& answer, double timeoutInterval) {
    Arrivals arrivals(timeoutInterval);
    if (std::holds_alternative<NoAnswer>(answer.answer)) {
        arrivals.add(forever);
        return arrivals.end({});
    }
    arrivals.add(answer.latency);
    if (const auto* lost = std::get_if<TransportFailure>(&answer.answer)) return arrivals.end(failure(lost->text));
    if (const auto* other = std::get_if<NotHTTP>(&answer.answer)) {
        return arrivals.end(received(std::nullopt, other->body));
    }
    if (std::holds_alternative<StallAfterHeaders>(answer.answer)) {
        arrivals.add(forever);
        return arrivals.end({});
    }
    const auto& http = std::get<HTTPAnswer>(answer.answer);
    std::string data;
    for (const auto& piece : http.body) {
        if (!arrivals.add(piece.pause, !piece.bytes.empty())) break;
        data += piece.bytes;
    }
    if (http.brokenOff) return arrivals.end(failure(*http.brokenOff));
    return arrivals.end(received(http.status, std::move(data)));
}

std::optional<URLRequest> redirected(const URLRequest& request, const NetworkAnswer& answer) {
    const auto* http = std::get_if<HTTPAnswer>(&answer.answer);
    if (http == nullptr) return std::nullopt;
    const bool keepsMethod = http->status == 307 || http->status == 308;
    if (!keepsMethod && (http->status < 301 || http->status > 303)) return std::nullopt;
    const auto location = std::find_if(http->headers.begin(), http->headers.end(),
                                       [](const auto& header) { return lowerCased(header.first) == "location"; });
    if (location == http->headers.end()) return std::nullopt;
    URLRequest next = request;
    next.url.absoluteString = resolved(request.url, location->second);
    const bool toGet = http->status == 303 ? request.method != "HEAD" : request.method == "POST";
    if (!keepsMethod && toGet) {
        next.method = "GET";
        next.body.reset();
        std::erase_if(next.headers,
                      [](const auto& header) { return lowerCased(header.first).starts_with("content-"); });
    }
    return next;
}

bool isSupported(const URL& url) {
    const auto name = scheme(url);
    const auto authority = URLComponents::split(url.absoluteString).authority;
    return name && (*name == "http" || *name == "https") && authority && !authority->empty();
}

}  // namespace vantrel::virtualmac
