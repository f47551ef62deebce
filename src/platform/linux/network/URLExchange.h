#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/network/CurlHandles.h"
#include "platform/network/URLSession.h"

namespace vantrel::linuxdesktop {

class HTTPTransfer;

/// One request with its redirects, up to its reply. Under way from its construction on. The network thread.
class URLExchange {
  public:
    using Clock = std::chrono::steady_clock;

    /// The URL is http or https and names a host.
    URLExchange(CURLM* multi, URLRequest request, URLSession::Completion completion);
    ~URLExchange();

    /// Whether the handle is that of its transfer.
    bool uses(const CURL* handle) const;

    /// Its transfer has ended. Empty if the exchange goes on.
    std::optional<URLReply> transferEnded(CURLcode code);

    /// When it is to be given up if nothing is heard until then. Empty for never.
    std::optional<Clock::time_point> deadline() const;

    const URLSession::Completion& completion() const { return completion_; }

  private:
    void send();
    std::optional<URLReply> follow(int status, const std::string& location);

    CURLM* const multi_;
    URLRequest request_;
    const URLSession::Completion completion_;
    std::unique_ptr<HTTPTransfer> transfer_;
    Clock::time_point heard_;
    int redirects_ = 0;
};

URLReply failure(std::string_view text);

/// Whether the address is http or https.
bool hasSupportedScheme(const URL& url);

}  // namespace vantrel::linuxdesktop
