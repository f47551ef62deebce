#pragma once

#include <string_view>

#include "practice/state/PracticeParticipant.h"

namespace vantrel::practice {

enum class Presence { in, lost, left };

/// "in", "lost", "left".
std::string_view textOf(Presence presence);

/// Tells by the server's clock alone who is still there.
class ParticipantPresence {
  public:
    /// `lostAfterSeconds`: how long nothing may be heard before a participant counts as lost.
    explicit ParticipantPresence(double lostAfterSeconds) : lostAfterSeconds_(lostAfterSeconds) {}

    /// `now` in seconds since 1970. Left since the disconnect notice, for good; lost while the last heartbeat (the join
    /// before there was one) is too long ago; otherwise in. A lost participant who is heard again is in.
    Presence of(const PracticeParticipant& participant, double now) const;

    /// When the participant was last heard of: the notice, the last heartbeat or the join.
    static double heardAt(const PracticeParticipant& participant);

  private:
    double lostAfterSeconds_;
};

}  // namespace vantrel::practice
