#pragma once

#include <string>
#include <variant>
#include <vector>

#include "practice/bodies/BodyError.h"

namespace vantrel::practice {

/// The body of a heartbeat or of a disconnect notice.
struct HeartbeatBody {
    struct Violation {
        std::string type;
        std::string detail;
        std::string at;
    };

    /// As the participant typed it, in upper or lower case.
    std::string sessionCode;
    std::string userToken;
    std::string timestamp;
    std::string clientVersion;
    bool lockdownActive = false;
    bool meetConnected = false;
    std::vector<Violation> violations;
    bool disconnecting = false;

    static std::variant<HeartbeatBody, BodyError> read(const std::string& body);
};

}  // namespace vantrel::practice
