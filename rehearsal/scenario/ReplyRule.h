#pragma once

#include <optional>
#include <string>

#include "practice/bodies/BendRule.h"

namespace vantrel::rehearsal {

/// How the server's replies to some requests differ from what it would answer by itself.
struct ReplyRule {
    /// answer: as the bend says; transportError: no connection; silence: never a byte; notHTTP: a response of another
    /// protocol.
    enum class Ending { answer, transportError, silence, notHTTP };

    /// Which requests, how many of them, and what the reply becomes.
    practice::BendRule bend;
    Ending ending = Ending::answer;
    /// The platform's description of a transport error.
    std::string errorText;
    /// The body in so many equal pieces, each after a pause; 0: whole.
    int pieces = 0;
    /// Seconds before each piece.
    double pause = 0;
};

}  // namespace vantrel::rehearsal
