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
#include "practice/exchanges/ReportExchanges.h"
#include "practice/exchanges/TrainerExchanges.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/state/ExchangeLog.h"
#include "practice/state/PageReportLog.h"
#include "practice/state/ParticipantHistory.h"
#include "practice/state/PracticeParticipant.h"
#include "practice/state/PublishedVersion.h"
#include "practice/state/ReceivedExchange.h"
#include "practice/state/ReplyBender.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// A server for trying the client out: sessions in memory, replies that tests can bend, and a record of what came in.
///
/// Any thread may call anything. What is kept is bounded, however long it runs. Nothing here waits: a delay, a dropped
/// connection or a stall is written in the reply, and whoever carries the reply does it, and tells with `noteDelivery`
/// what became of it.
class PracticeServer {
  public:
    /// Seconds since 1970. Any thread calls it.
    using Clock = std::function<double()>;

    PracticeServer(PracticeConfiguration configuration, Clock clock);
    PracticeServer(const PracticeServer&) = delete;
    PracticeServer& operator=(const PracticeServer&) = delete;

    /// Carries out one exchange. Whatever the bytes are, there is a reply.
    PracticeReply handle(const PracticeRequest& request);

    /// For a reply that went out later than at once, or did not go out whole.
    void noteDelivery(std::uint64_t exchange, bool delivered);

    /// What the control interface does, for callers in the same process.
    std::optional<std::uint64_t> bend(BendRule rule);
    /// The code in any case; false when there is no such session.
    bool endSession(std::string_view code);
    /// One more, until a reset. Its code is in upper case; false when there is a session of that code.
    bool addSession(PracticeSession session);
    /// What is answered about client versions from now on, after a reset too.
    void setVersion(VersionConfiguration version);
    /// Everything as at the start: sessions, participants, bends, what was received and reported.
    void reset();
    std::vector<ReceivedExchange> received() const;
    /// What the meeting pages reported, as PageReportLog orders it.
    std::vector<PageReportLog::Entry> pageReports() const;
    std::vector<PracticeSession> sessions() const;
    std::vector<PracticeParticipant> participants() const;
    /// Empty when there is no such participant.
    ParticipantHistory history(std::uint64_t participant) const;

  private:
    /// What is neither recorded nor bent.
    static bool isAside(const RequestTarget& target);
    PracticeReply aside(const PracticeRequest& request, const RequestTarget& target, double now);
    PracticeReply exchange(const PracticeRequest& request, const RequestTarget& target, double now);

    const PracticeConfiguration configuration_;
    const Clock clock_;
    const AccessRules access_;
    // Each guards itself, for as long as it takes to copy values; reading a body and writing a reply hold up nobody.
    SessionRegistry registry_;
    PublishedVersion version_;
    ReplyBender bender_;
    ExchangeLog log_;
    PageReportLog reports_;
    ApiExchanges api_;
    ControlExchanges control_;
    TrainerExchanges trainer_;
    ReportExchanges meeting_;
};

}  // namespace vantrel::practice
