#pragma once

#include <string>

#include "server/JoinOutcome.h"

namespace vantrel {

/// The session that a participant has joined.
struct JoinedSession {
    /// As the participant typed it.
    std::string code;
    JoinResult result;
};

}  // namespace vantrel
