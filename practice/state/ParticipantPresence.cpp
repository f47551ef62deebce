#include "practice/state/ParticipantPresence.h"

#include <algorithm>

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
    const ReceivedHeartbeat* heartbeat = lastHeartbeat(participant);
    const double heardAt = heartbeat != nullptr ? heartbeat->receivedAt : participant.joinedAt;
    return now - heardAt > lostAfterSeconds_ ? Presence::lost : Presence::in;
}

const ReceivedHeartbeat* ParticipantPresence::lastHeartbeat(const PracticeParticipant& participant) {
    const auto& heartbeats = participant.heartbeats;
    const auto last = std::find_if(heartbeats.rbegin(), heartbeats.rend(),
                                   [](const ReceivedHeartbeat& heartbeat) { return !heartbeat.disconnecting; });
    return last == heartbeats.rend() ? nullptr : &*last;
}

}  // namespace vantrel::practice
