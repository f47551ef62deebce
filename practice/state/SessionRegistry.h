#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "practice/bodies/HeartbeatBody.h"
#include "practice/bodies/JoinBody.h"
#include "practice/configuration/PracticeSession.h"
#include "practice/state/PracticeParticipant.h"

namespace vantrel::practice {

/// The sessions and who joined them. Not guarded: PracticeServer's mutex is.
class SessionRegistry {
  public:
    explicit SessionRegistry(std::vector<PracticeSession> sessions);

    /// Everything as at the start: the sessions as configured, nobody in them.
    void reset();

    const std::vector<PracticeSession>& sessions() const { return sessions_; }
    /// In the order they joined.
    const std::vector<PracticeParticipant>& participants() const { return participants_; }

    /// The code exactly as stored, that is in upper case; null when there is none. Valid until the next reset.
    const PracticeSession* session(std::string_view code) const;
    /// Valid until the next join or reset.
    const PracticeParticipant* participant(const std::string& token) const;

    /// Returns the new participant's token. Tokens count up from 1, so that the same run gives the same tokens.
    std::string join(const std::string& code, const JoinBody& body, double now);
    /// The token has to be known.
    void heartbeat(const HeartbeatBody& body, double now);
    /// False when there is no such session.
    bool end(std::string_view code);

  private:
    std::vector<PracticeSession> configured_;
    std::vector<PracticeSession> sessions_;
    std::vector<PracticeParticipant> participants_;
    std::map<std::string, std::size_t> participantOfToken_;
};

}  // namespace vantrel::practice
