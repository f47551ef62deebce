#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vantrel::practice {

/// A violation as reported, in the participant's own words.
struct ReceivedViolation {
    std::string type;
    std::string detail;
    /// ISO 8601, by the participant's clock.
    std::string at;
    /// Seconds since 1970, by the server's clock.
    double receivedAt = 0;
};

/// A heartbeat without its violations, which are kept with the participant.
struct ReceivedHeartbeat {
    double receivedAt = 0;
    std::string timestamp;
    bool lockdownActive = false;
    bool meetConnected = false;
    bool disconnecting = false;
};

/// One join and everything heard of it since.
struct PracticeParticipant {
    std::string token;
    std::string sessionCode;
    std::string fullName;
    std::string email;
    std::string platform;
    std::string clientVersion;
    double joinedAt = 0;
    std::vector<ReceivedHeartbeat> heartbeats;
    std::vector<ReceivedViolation> violations;
    /// When the disconnect notice came.
    std::optional<double> leftAt;
};

}  // namespace vantrel::practice
