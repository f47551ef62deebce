#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/network/URLs.h"
#include "platform/system/PlatformError.h"

namespace vantrel {

/// The NSURLRequestCachePolicy in use.
enum class CachePolicy { useProtocolCachePolicy = 0 };

/// NSMutableURLRequest.
struct URLRequest {
    URL url;
    CachePolicy cachePolicy = CachePolicy::useProtocolCachePolicy;
    /// Idle time in seconds. It starts again whenever bytes arrive.
    double timeoutInterval = 60;
    std::string method = "GET";
    /// Fields that the rules set. The platform adds its own.
    std::vector<std::pair<std::string, std::string>> headers;
    /// A body of zero bytes is none.
    std::optional<std::string> body;
};

/// The result of a data task.
struct URLReply {
    /// A transport failure. The other two are then empty.
    std::optional<PlatformError> error;
    /// The HTTP status code. Empty if the response is not HTTP.
    std::optional<int> statusCode;
    /// The body's bytes, whatever they are, unpacked if they came compressed. Empty if there are none, also for a body
    /// of zero bytes.
    std::optional<std::string> data;
};

/// The shared URL session (NSURLSession). What is asked for is the address's text from the authority to the fragment as
/// it stands; an empty path becomes a slash. A 301, 302, 303, 307 or 308 with a Location is followed; the first three
/// turn POST into GET. Every other final status is a reply.
class URLSession {
  public:
    virtual ~URLSession() = default;

    using Completion = std::function<void(URLReply)>;

    /// dataTaskWithRequest:completionHandler:, resumed at once. Any thread; never blocks. The completion is called
    /// exactly once, on the session's own queue, one completion after another, never on the main thread. A URL without
    /// a scheme, or with an unsupported one, fails here with the platform's text.
    virtual void dataTask(URLRequest request, Completion completion) = 0;
};

}  // namespace vantrel
