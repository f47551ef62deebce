#pragma once

#include <string_view>

#include "practice/state/PracticeParticipant.h"

namespace vantrel::practice {

enum class Presence { in, lost, left };

/// "in", "lost", "left".
std::string_view textOf(Presence presence);

/// Decides by the server's clock alone which participants are still present.
class ParticipantPresence {
  public:
    /// `lostAfterSeconds`: after this long without a message a participant counts as lost.
    explicit ParticipantPresence(double lostAfterSeconds) : lostAfterSeconds_(lostAfterSeconds) {}

    /// `now` in seconds since 1970. Left: after the disconnect notice, for good. Lost: the last heartbeat (or the join
    /// if there was none) is too long ago. Otherwise in. A lost participant who sends again is in.
    Presence of(const PracticeParticipant& participant, double now) const;

    /// When the participant last sent something: the notice, the last heartbeat or the join.
    static double heardAt(const PracticeParticipant& participant);

  private:
    double lostAfterSeconds_;
};

}  // namespace vantrel::practice
