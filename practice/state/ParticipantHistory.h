#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace vantrel::practice {

/// A time such as 2024-05-17T09:41:07Z that allocates nothing, because a day contains very many.
class TimeText {
  public:
    /// The text must have that form.
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

/// A violation as reported, with the participant's own texts.
struct ReceivedViolation {
    std::string type;
    std::string detail;
    /// By the participant's clock.
    TimeText at;
    /// Seconds since 1970, by the server's clock.
    double receivedAt = 0;
};

/// The newest messages of one participant, in order of arrival.
struct ParticipantHistory {
    /// Ten hours, at one every 15 seconds.
    static constexpr std::size_t heartbeatsKept = 2400;
    static constexpr std::size_t violationsKept = 200;

    std::deque<ReceivedHeartbeat> heartbeats;
    std::deque<ReceivedViolation> violations;
};

}  // namespace vantrel::practice
