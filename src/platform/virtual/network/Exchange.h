#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/network/URLSession.h"
#include "platform/virtual/network/NetworkAnswer.h"
#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

inline constexpr std::string_view timedOutText = "La richiesta è scaduta.";
inline constexpr std::string_view unsupportedURLText = "URL non supportato";
inline constexpr std::string_view tooManyRedirectsText = "Troppi reindirizzamenti HTTP.";
inline constexpr std::string_view notConnectedText = "Impossibile connettersi al server.";

/// How an answer looks to the client: after how many seconds it is complete (infinity for never), and its content.
struct Outcome {
    double after = 0;
    URLReply reply;
};

/// Applies the idle timeout, in seconds. 0 or less means no timeout.
Outcome outcome(const NetworkAnswer& answer, double timeoutInterval);

/// The request that follows the answer's redirect. Empty if it is not a redirect. A 303 turns every method but HEAD
/// into GET, a 301 or 302 only POST; the body is then dropped.
std::optional<URLRequest> redirected(const URLRequest& request, const NetworkAnswer& answer);

/// Whether the URL is http or https with a host.
bool isSupported(const URL& url);

URLReply failure(std::string_view text);

}  // namespace vantrel::virtualmac
