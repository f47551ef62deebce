#include "practice/state/SessionRegistry.h"

#include <algorithm>
#include <utility>

#include "practice/configuration/SessionCode.h"
#include "practice/state/KeptText.h"

namespace vantrel::practice {

namespace {

template <typename Value>
void pushWithin(std::deque<Value>& list, std::size_t most, Value value) {
    list.push_back(std::move(value));
    if (list.size() > most) list.pop_front();
}

/// Null if there is none.
template <typename Sessions>
auto* find(Sessions& sessions, std::string_view code) {
    const auto found = std::find_if(sessions.begin(), sessions.end(),
                                    [&](const auto& session) { return session.session.code == code; });
    return found == sessions.end() ? nullptr : &*found;
}

}  // namespace

SessionRegistry::SessionRegistry(std::vector<PracticeSession> sessions, ParticipantPresence presence)
    : configured_(std::move(sessions)), presence_(presence) {
    reset();
}

void SessionRegistry::reset() {
    const std::lock_guard lock(mutex_);
    sessions_.clear();
    for (const PracticeSession& session : configured_) sessions_.push_back({session, 0, {}});
    participants_.clear();
    numberOfToken_.clear();
    nextNumber_ = 1;
}

std::optional<PracticeSession> SessionRegistry::session(std::string_view code) const {
    const std::lock_guard lock(mutex_);
    const Session* found = find(sessions_, code);
    return found == nullptr ? std::nullopt : std::optional(found->session);
}

std::vector<PracticeSession> SessionRegistry::sessions() const {
    const std::lock_guard lock(mutex_);
    std::vector<PracticeSession> sessions;
    sessions.reserve(sessions_.size());
    for (const Session& session : sessions_) sessions.push_back(session.session);
    return sessions;
}

std::vector<SessionRegistry::SessionState> SessionRegistry::states() const {
    const std::lock_guard lock(mutex_);
    std::vector<SessionState> states;
    for (const Session& session : sessions_) {
        SessionState state{session.session, {}, session.violationCount, {}};
        for (const auto& [number, entry] : participants_) {
            if (entry.participant.sessionCode == session.session.code) state.participants.push_back(entry.participant);
        }
        state.violations.assign(session.violations.rbegin(), session.violations.rend());
        states.push_back(std::move(state));
    }
    return states;
}

std::vector<PracticeParticipant> SessionRegistry::participants() const {
    const std::lock_guard lock(mutex_);
    std::vector<PracticeParticipant> participants;
    participants.reserve(participants_.size());
    for (const auto& [number, entry] : participants_) participants.push_back(entry.participant);
    return participants;
}

std::optional<PracticeParticipant> SessionRegistry::participant(const std::string& token) const {
    const std::lock_guard lock(mutex_);
    const auto number = numberOfToken_.find(token);
    return number == numberOfToken_.end() ? std::nullopt : std::optional(participants_.at(number->second).participant);
}

ParticipantHistory SessionRegistry::history(std::uint64_t participant) const {
    const std::lock_guard lock(mutex_);
    const auto found = participants_.find(participant);
    return found == participants_.end() ? ParticipantHistory() : found->second.history;
}

std::optional<std::string> SessionRegistry::join(const std::string& code, const JoinBody& body, double now) {
    const std::lock_guard lock(mutex_);
    if (!makePlace(now)) return std::nullopt;
    Participant entry;
    PracticeParticipant& participant = entry.participant;
    participant.number = nextNumber_++;
    participant.token = "practice-" + std::to_string(participant.number);
    participant.sessionCode = code;
    participant.fullName = keptText(body.fullName, longestName);
    participant.email = keptText(body.email, longestName);
    participant.platform = keptText(body.platform, longestWord);
    participant.clientVersion = keptText(body.clientVersion, longestWord);
    participant.joinedAt = now;
    std::string token = participant.token;
    numberOfToken_[token] = participant.number;
    participants_.emplace(participant.number, std::move(entry));
    return token;
}

SessionRegistry::Heard SessionRegistry::heartbeat(const HeartbeatBody& body, double now) {
    const std::string code = upperCaseCode(body.sessionCode);
    const std::lock_guard lock(mutex_);
    const auto number = numberOfToken_.find(body.userToken);
    if (number == numberOfToken_.end()) return Heard::unknownToken;
    Participant& participant = participants_.at(number->second);
    Session* session = find(sessions_, code);
    if (session == nullptr || participant.participant.sessionCode != code) return Heard::otherSession;
    keep(body, now, participant, *session);
    return session->session.status == SessionStatus::ended ? Heard::ended : Heard::active;
}

bool SessionRegistry::add(PracticeSession session) {
    const std::lock_guard lock(mutex_);
    if (find(sessions_, session.code) != nullptr) return false;
    sessions_.push_back({std::move(session), 0, {}});
    return true;
}

bool SessionRegistry::end(std::string_view code) {
    const std::lock_guard lock(mutex_);
    Session* session = find(sessions_, code);
    if (session == nullptr) return false;
    session->session.status = SessionStatus::ended;
    return true;
}

bool SessionRegistry::makePlace(double now) {
    if (participants_.size() < participantsKept) return true;
    auto oldest = participants_.end();
    double oldestHeardAt = 0;
    for (auto entry = participants_.begin(); entry != participants_.end(); ++entry) {
        const PracticeParticipant& participant = entry->second.participant;
        if (presence_.of(participant, now) == Presence::in) continue;
        const double heardAt = ParticipantPresence::heardAt(participant);
        if (oldest != participants_.end() && heardAt >= oldestHeardAt) continue;
        oldest = entry;
        oldestHeardAt = heardAt;
    }
    if (oldest == participants_.end()) return false;
    numberOfToken_.erase(oldest->second.participant.token);
    participants_.erase(oldest);
    return true;
}

void SessionRegistry::keep(const HeartbeatBody& body, double now, Participant& entry, Session& session) {
    PracticeParticipant& participant = entry.participant;
    const ReceivedHeartbeat heartbeat{now, TimeText(body.timestamp), body.lockdownActive, body.meetConnected,
                                      body.disconnecting};
    pushWithin(entry.history.heartbeats, ParticipantHistory::heartbeatsKept, heartbeat);
    ++participant.heartbeatCount;
    const std::size_t count = body.violations.size();
    const std::size_t most = std::max(ParticipantHistory::violationsKept, newestViolationsKept);
    for (std::size_t index = count > most ? count - most : 0; index < count; ++index) {
        const HeartbeatBody::Violation& reported = body.violations[index];
        const ReceivedViolation violation{keptText(reported.type, longestWord), keptText(reported.detail, longestName),
                                          TimeText(reported.at), now};
        pushWithin(entry.history.violations, ParticipantHistory::violationsKept, violation);
        pushWithin(session.violations, newestViolationsKept,
                   SessionViolation{participant.number, participant.fullName, violation});
    }
    participant.violationCount += count;
    session.violationCount += count;
    if (!body.disconnecting) participant.lastHeartbeat = heartbeat;
    // A heartbeat that arrives after the notice does not bring the participant back.
    if (body.disconnecting && !participant.leftAt) participant.leftAt = now;
}

}  // namespace vantrel::practice
