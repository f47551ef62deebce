#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "practice/configuration/PracticeConfiguration.h"
#include "practice/configuration/PracticeSession.h"
#include "practice/exchanges/AccessRules.h"
#include "practice/exchanges/ApiExchanges.h"
#include "practice/exchanges/ControlExchanges.h"
#include "practice/exchanges/MeetingExchanges.h"
#include "practice/exchanges/TrainerExchanges.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/state/ExchangeLog.h"
#include "practice/state/PageReportLog.h"
#include "practice/state/ParticipantHistory.h"
#include "practice/state/PracticeParticipant.h"
#include "practice/state/PublishedVersion.h"
#include "practice/state/ReceivedExchange.h"
#include "practice/state/ReplyRules.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// A server for trying the client out: sessions in memory, replies that tests can change, and a record of what was
/// received.
///
/// Any thread may call anything. Memory use is bounded, however long it runs. Nothing here waits: the reply contains a
/// delay, a dropped connection or a stall, and the sender of the reply carries it out and reports the result with
/// `noteDelivery`.
class PracticeServer {
  public:
    /// Seconds since 1970. Called on any thread.
    using Clock = std::function<double()>;

    PracticeServer(PracticeConfiguration configuration, Clock clock);
    PracticeServer(const PracticeServer&) = delete;
    PracticeServer& operator=(const PracticeServer&) = delete;

    /// Carries out one exchange. There is a reply whatever the bytes are.
    PracticeReply handle(const PracticeRequest& request);

    /// For a reply that was sent later, or not completely.
    void noteDelivery(std::uint64_t exchange, bool delivered);

    /// What the control interface does, for callers in the same process.
    std::optional<std::uint64_t> addReplyRule(ReplyRule rule);
    /// The code in upper or lower case. False if there is no such session.
    bool endSession(std::string_view code);
    /// Adds a session until the next reset. Its code must be in upper case. False if there is a session with that code.
    bool addSession(PracticeSession session);
    /// From now on, the answer about client versions; a reset keeps it.
    void setVersion(VersionConfiguration version);
    /// Resets everything to the start: sessions, participants, reply rules, requests received and reports.
    void reset();
    std::vector<ReceivedExchange> received() const;
    /// The reports of the meeting pages, in the order of PageReportLog.
    std::vector<PageReportLog::Entry> pageReports() const;
    std::vector<PracticeSession> sessions() const;
    std::vector<PracticeParticipant> participants() const;
    /// Empty if there is no such participant.
    ParticipantHistory history(std::uint64_t participant) const;

  private:
    /// Whether such a request is neither recorded nor changed by reply rules.
    static bool isAside(const RequestTarget& target);
    PracticeReply aside(const PracticeRequest& request, const RequestTarget& target, double now);
    PracticeReply exchange(const PracticeRequest& request, const RequestTarget& target, double now);

    const PracticeConfiguration configuration_;
    const Clock clock_;
    const AccessRules access_;
    // Each guards itself, only while it copies values. Reading a body and writing a reply block nobody.
    SessionRegistry registry_;
    PublishedVersion version_;
    ReplyRules replyRules_;
    ExchangeLog log_;
    PageReportLog reports_;
    ApiExchanges api_;
    ControlExchanges control_;
    TrainerExchanges trainer_;
    MeetingExchanges meeting_;
};

}  // namespace vantrel::practice
