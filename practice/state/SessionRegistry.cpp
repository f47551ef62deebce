#include "practice/state/SessionRegistry.h"

#include <algorithm>
#include <utility>

namespace vantrel::practice {

SessionRegistry::SessionRegistry(std::vector<PracticeSession> sessions) : configured_(std::move(sessions)) {
    reset();
}

void SessionRegistry::reset() {
    sessions_ = configured_;
    participants_.clear();
    participantOfToken_.clear();
}

const PracticeSession* SessionRegistry::session(std::string_view code) const {
    const auto found = std::find_if(sessions_.begin(), sessions_.end(),
                                    [&](const PracticeSession& session) { return session.code == code; });
    return found == sessions_.end() ? nullptr : &*found;
}

const PracticeParticipant* SessionRegistry::participant(const std::string& token) const {
    const auto found = participantOfToken_.find(token);
    return found == participantOfToken_.end() ? nullptr : &participants_[found->second];
}

std::string SessionRegistry::join(const std::string& code, const JoinBody& body, double now) {
    PracticeParticipant participant;
    participant.token = "practice-" + std::to_string(participants_.size() + 1);
    participant.sessionCode = code;
    participant.fullName = body.fullName;
    participant.email = body.email;
    participant.platform = body.platform;
    participant.clientVersion = body.clientVersion;
    participant.joinedAt = now;
    participantOfToken_[participant.token] = participants_.size();
    participants_.push_back(std::move(participant));
    return participants_.back().token;
}

void SessionRegistry::heartbeat(const HeartbeatBody& body, double now) {
    PracticeParticipant& participant = participants_[participantOfToken_.at(body.userToken)];
    participant.heartbeats.push_back(
        {now, body.timestamp, body.lockdownActive, body.meetConnected, body.disconnecting});
    for (const HeartbeatBody::Violation& violation : body.violations) {
        participant.violations.push_back({violation.type, violation.detail, violation.at, now});
    }
    // A heartbeat that was overtaken by the notice does not bring anyone back.
    if (body.disconnecting && !participant.leftAt) participant.leftAt = now;
}

bool SessionRegistry::end(std::string_view code) {
    for (PracticeSession& session : sessions_) {
        if (session.code == code) {
            session.status = SessionStatus::ended;
            return true;
        }
    }
    return false;
}

}  // namespace vantrel::practice
