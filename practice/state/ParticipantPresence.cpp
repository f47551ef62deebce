#include "practice/state/ParticipantPresence.h"

namespace vantrel::practice {

std::string_view textOf(Presence presence) {
    switch (presence) {
        case Presence::in:
            return "in";
        case Presence::lost:
            return "lost";
        case Presence::left:
            return "left";
    }
    return "";
}

Presence ParticipantPresence::of(const PracticeParticipant& participant, double now) const {
    if (participant.leftAt) return Presence::left;
    return now - heardAt(participant) > lostAfterSeconds_ ? Presence::lost : Presence::in;
}

double ParticipantPresence::heardAt(const PracticeParticipant& participant) {
    if (participant.leftAt) return *participant.leftAt;
    return participant.lastHeartbeat ? participant.lastHeartbeat->receivedAt : participant.joinedAt;
}

}  // namespace vantrel::practice
