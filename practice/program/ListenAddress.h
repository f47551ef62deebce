#pragma once

#include <optional>
#include <string>

namespace vantrel::practice {

/// A numeric IPv4 or IPv6 address to listen on.
class ListenAddress {
  public:
    /// 127.0.0.1.
    ListenAddress() = default;
    static std::optional<ListenAddress> parse(const std::string& text);

    const std::string& text() const { return text_; }
    /// Whether only this computer can reach it.
    bool isLoopback() const { return isLoopback_; }
    /// Such as "http://127.0.0.1:8787" or "http://[::1]:8787".
    std::string url(int port) const;

  private:
    std::string text_ = "127.0.0.1";
    bool isLoopback_ = true;
};

}  // namespace vantrel::practice
