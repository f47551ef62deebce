#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace vantrel::practice {

/// A time of the form 2024-05-17T09:41:07Z without a piece of memory of its own: a day holds very many.
class TimeText {
  public:
    /// The text has to have that form.
    explicit TimeText(std::string_view text) { text.copy(characters_.data(), characters_.size()); }

    std::string_view text() const { return {characters_.data(), characters_.size()}; }

  private:
    std::array<char, 20> characters_{};
};

/// A heartbeat without its violations, which are kept with the participant.
struct ReceivedHeartbeat {
    double receivedAt = 0;
    TimeText timestamp;
    bool lockdownActive = false;
    bool meetConnected = false;
    bool disconnecting = false;
};

/// A violation as reported, in the participant's own words.
struct ReceivedViolation {
    std::string type;
    std::string detail;
    /// By the participant's clock.
    TimeText at;
    /// Seconds since 1970, by the server's clock.
    double receivedAt = 0;
};

/// The newest of what was heard of one participant, the oldest first.
struct ParticipantHistory {
    /// Ten hours, at one every 15 seconds.
    static constexpr std::size_t heartbeatsKept = 2400;
    static constexpr std::size_t violationsKept = 200;

    std::deque<ReceivedHeartbeat> heartbeats;
    std::deque<ReceivedViolation> violations;
};

}  // namespace vantrel::practice
