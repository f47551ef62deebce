#pragma once

#include <string>
#include <variant>

#include "server/VantrelError.h"

namespace vantrel {

/// What the server returns to a participant who has joined.
struct JoinResult {
    std::string meetLink;
    std::string userToken;
    std::string sessionTitle;
    bool operator==(const JoinResult&) const = default;
};

using JoinOutcome = std::variant<JoinResult, VantrelError>;

}  // namespace vantrel
