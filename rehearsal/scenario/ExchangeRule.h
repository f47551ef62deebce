#pragma once

#include <optional>
#include <string>

#include "practice/bodies/ReplyRule.h"

namespace vantrel::rehearsal {

/// How the replies to some requests differ from the server's own.
struct ExchangeRule {
    /// answer: the server's reply, changed by the rule; transportError: no connection; silence: never a byte; notHTTP:
    /// a response of another protocol.
    enum class Ending { answer, transportError, silence, notHTTP };

    /// Which requests, how many of them, and the changed reply.
    practice::ReplyRule reply;
    Ending ending = Ending::answer;
    /// The platform's description of a transport error.
    std::string errorText;
    /// The body in this many equal pieces, each after a pause. 0: in one piece.
    int pieces = 0;
    /// Seconds before each piece.
    double pause = 0;
};

}  // namespace vantrel::rehearsal
