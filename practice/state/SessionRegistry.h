#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "practice/bodies/HeartbeatBody.h"
#include "practice/bodies/JoinBody.h"
#include "practice/configuration/PracticeSession.h"
#include "practice/state/ParticipantHistory.h"
#include "practice/state/ParticipantPresence.h"
#include "practice/state/PracticeParticipant.h"

namespace vantrel::practice {

/// The sessions and their participants, in bounded memory, however long a day is and whatever is sent. Any thread.
/// Results are copies.
class SessionRegistry {
  public:
    static constexpr std::size_t participantsKept = 500;
    /// For each session, from all of its participants together.
    static constexpr std::size_t newestViolationsKept = 200;
    /// In bytes, for a name or an e-mail address, a violation's detail, and words such as its type.
    static constexpr std::size_t longestName = 500;
    static constexpr std::size_t longestWord = 100;

    struct SessionViolation {
        std::uint64_t participant = 0;
        std::string fullName;
        ReceivedViolation violation;
    };

    /// A session's state at one moment.
    struct SessionState {
        PracticeSession session;
        /// In the order they joined.
        std::vector<PracticeParticipant> participants;
        std::size_t violationCount = 0;
        /// The newest first.
        std::vector<SessionViolation> violations;
    };

    enum class Heard { unknownToken, otherSession, active, ended };

    SessionRegistry(std::vector<PracticeSession> sessions, ParticipantPresence presence);

    /// Resets to the start: the sessions as configured, without participants.
    void reset();

    /// The code exactly as stored, that is in upper case. Empty if there is none.
    std::optional<PracticeSession> session(std::string_view code) const;
    std::vector<PracticeSession> sessions() const;
    std::vector<SessionState> states() const;
    /// In the order they joined, over all sessions.
    std::vector<PracticeParticipant> participants() const;
    std::optional<PracticeParticipant> participant(const std::string& token) const;
    /// Empty if there is no such participant.
    ParticipantHistory history(std::uint64_t participant) const;

    /// Returns the new participant's token. Tokens count from 1, so that the same run gives the same tokens. If all
    /// places are taken, forgets the participant who left or was lost and last sent something longest ago. If all are
    /// present, there is no place and no token.
    std::optional<std::string> join(const std::string& code, const JoinBody& body, double now);
    /// Keeps the heartbeat if its token belongs to its session.
    Heard heartbeat(const HeartbeatBody& body, double now);
    /// Until the next reset. False if there is a session with that code.
    bool add(PracticeSession session);
    /// False if there is no such session.
    bool end(std::string_view code);

  private:
    struct Session {
        PracticeSession session;
        std::size_t violationCount = 0;
        std::deque<SessionViolation> violations;
    };
    struct Participant {
        PracticeParticipant participant;
        ParticipantHistory history;
    };

    // With the lock held.
    bool makePlace(double now);
    static void keep(const HeartbeatBody& body, double now, Participant& participant, Session& session);

    const std::vector<PracticeSession> configured_;
    const ParticipantPresence presence_;
    mutable std::mutex mutex_;
    std::vector<Session> sessions_;
    std::map<std::uint64_t, Participant> participants_;
    std::unordered_map<std::string, std::uint64_t> numberOfToken_;
    std::uint64_t nextNumber_ = 1;
};

}  // namespace vantrel::practice
