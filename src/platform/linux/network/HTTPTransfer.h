#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/network/CurlHandles.h"
#include "platform/network/URLSession.h"

namespace vantrel::linuxdesktop {

/// One request and its reply, without redirects. It is under way from its construction on, as part of the multi handle,
/// and is taken from it when it is destroyed. The thread of the multi handle only, and in none of its callbacks.
class HTTPTransfer {
  public:
    struct Result {
        URLReply reply;
        /// Zero without a final reply. There may be one whose body cannot be read.
        int status = 0;
        /// Where a redirect leads, as the server wrote it.
        std::optional<std::string> location;
        /// The reply's headers were longer than anybody's are. The error is set.
        bool headersNeverEnd = false;
    };

    /// `heard` is called whenever bytes have been sent or have arrived.
    HTTPTransfer(CURLM* multi, const URLRequest& request, std::function<void()> heard);
    ~HTTPTransfer();
    HTTPTransfer(const HTTPTransfer&) = delete;
    HTTPTransfer& operator=(const HTTPTransfer&) = delete;

    const CURL* handle() const { return easy_.get(); }

    /// Once the multi handle has reported its end.
    Result result(CURLcode code);

  private:
    static std::size_t takeHeader(char* bytes, std::size_t size, std::size_t count, void* transfer);
    static std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* transfer);
    static int takeProgress(void* transfer, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent);

    void setAddress(const URL& url);
    void setMessage(const URLRequest& request);
    void setCallbacks();
    URLReply reply(int status);
    std::optional<std::string> field(const char* name) const;
    std::string errorText(CURLcode code) const;

    template <typename Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    CURLM* const multi_;
    const std::function<void()> heard_;
    // These two are read until the end.
    const std::string sentBody_;
    CurlList fields_;
    CurlEasy easy_;
    std::string body_;
    std::size_t headerBytes_ = 0;
    curl_off_t bytesSent_ = 0;
    bool bodyIsTooLarge_ = false;
};

}  // namespace vantrel::linuxdesktop
