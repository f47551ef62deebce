#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "practice/state/ParticipantHistory.h"

namespace vantrel::practice {

/// One join, and the participant's latest messages.
struct PracticeParticipant {
    /// Counted from 1, over all sessions.
    std::uint64_t number = 0;
    std::string token;
    std::string sessionCode;
    std::string fullName;
    std::string email;
    std::string platform;
    std::string clientVersion;
    double joinedAt = 0;
    /// When the disconnect notice arrived.
    std::optional<double> leftAt;
    /// The last one that was not the disconnect notice.
    std::optional<ReceivedHeartbeat> lastHeartbeat;
    /// Includes the notice, and heartbeats that are no longer kept.
    std::size_t heartbeatCount = 0;
    std::size_t violationCount = 0;
};

}  // namespace vantrel::practice
