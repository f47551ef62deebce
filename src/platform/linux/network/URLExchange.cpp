#include "platform/linux/network/URLExchange.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "platform/linux/network/HTTPTransfer.h"
#include "platform/linux/network/NetworkErrorText.h"
#include "platform/portable/URLComponents.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int mostRedirects = 16;
constexpr double longestTimeout = 1e6;

bool isRedirect(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

bool turnsIntoGet(int status, const std::string& method) {
    return status == 303 ? method != "HEAD" : status < 303 && method == "POST";
}

bool isContentType(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name == "content-type";
}

/// With an escape for every byte that no address has. Servers write such addresses.
std::string escaped(const std::string& reference) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view never = "\"<>\\^`{|}";
    std::string text;
    for (const char character : reference) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte > 0x20 && byte < 0x7f && never.find(character) == std::string_view::npos) {
            text += character;
        } else {
            text += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return text;
}

}  // namespace

URLReply failure(std::string_view text) {
    URLReply reply;
    reply.error = PlatformError{std::string(text)};
    return reply;
}

bool hasSupportedScheme(const URL& url) {
    const auto name = scheme(url);
    return name == "http" || name == "https";
}

URLExchange::URLExchange(CURLM* multi, URLRequest request, URLSession::Completion completion)
    : multi_(multi), request_(std::move(request)), completion_(std::move(completion)) {
    send();
}

URLExchange::~URLExchange() = default;

void URLExchange::send() {
    heard_ = Clock::now();
    // The one before goes first.
    transfer_.reset();
    transfer_ = std::make_unique<HTTPTransfer>(multi_, request_, [this] { heard_ = Clock::now(); });
}

bool URLExchange::uses(const CURL* handle) const {
    return transfer_ && transfer_->handle() == handle;
}

std::optional<URLReply> URLExchange::transferEnded(CURLcode code) {
    HTTPTransfer::Result result = transfer_->result(code);
    if (result.headersNeverEnd && deadline()) {
        // Nobody answers there. It is not read on, but ends as a request does that gets no answer.
        transfer_.reset();
        return std::nullopt;
    }
    if (isRedirect(result.status) && result.location) return follow(result.status, *result.location);
    return std::move(result.reply);
}

std::optional<URLExchange::Clock::time_point> URLExchange::deadline() const {
    if (!(request_.timeoutInterval > 0)) return std::nullopt;
    const std::chrono::duration<double> idle(std::min(request_.timeoutInterval, longestTimeout));
    return heard_ + std::chrono::ceil<Clock::duration>(idle);
}

std::optional<URLReply> URLExchange::follow(int status, const std::string& location) {
    const URL target{resolved(request_.url, escaped(location))};
    if (++redirects_ > mostRedirects) return failure(tooManyRedirectsText);
    if (!hasSupportedScheme(target) || URLComponents::split(target.absoluteString).authority.value_or("").empty()) {
        return failure(unsupportedURLText);
    }
    if (scheme(target) == "http" && scheme(request_.url) == "https") return failure(insecureRedirectText);
    if (turnsIntoGet(status, request_.method)) {
        request_.method = "GET";
        request_.body.reset();
        std::erase_if(request_.headers, [](const auto& header) { return isContentType(header.first); });
    }
    request_.url = target;
    send();
    return std::nullopt;
}

}  // namespace vantrel::linuxdesktop
