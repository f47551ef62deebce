#include "practice/PracticeServer.h"

#include <utility>

#include "practice/configuration/SessionCode.h"
#include "practice/exchanges/PageFileExchanges.h"
#include "practice/messages/JsonReply.h"
#include "practice/messages/RequestTarget.h"
#include "practice/pages/MeetingPage.h"

namespace vantrel::practice {

PracticeServer::PracticeServer(PracticeConfiguration configuration, Clock clock)
    : configuration_(std::move(configuration)),
      clock_(std::move(clock)),
      registry_(configuration_.sessions),
      api_(registry_, configuration_),
      control_(registry_, bender_, log_, reports_),
      trainer_(registry_, configuration_),
      meeting_(registry_, reports_) {}

PracticeReply PracticeServer::handle(const PracticeRequest& request) {
    const RequestTarget target(request.path);
    if (PageFileExchanges::isPageFile(target)) return PageFileExchanges::handle(request, target);
    const double now = clock_();

    const std::lock_guard lock(mutex_);
    if (ControlExchanges::isControl(target)) return control_.handle(request, target);
    if (TrainerExchanges::isTrainer(target)) return trainer_.handle(request, target, now);
    if (ReportExchanges::isReport(target)) return meeting_.handle(request, target, now);
    PracticeReply reply = exchange(request, target, now);
    const bool bent = bender_.bend(request, reply);
    reply.exchange = log_.record(request, reply, bent, now);
    return reply;
}

PracticeReply PracticeServer::exchange(const PracticeRequest& request, const RequestTarget& target, double now) {
    const auto& segments = target.segments();
    if (segments.size() == 2 && segments[0] == "meet") {
        if (request.method != "GET") return methodNotAllowed("GET");
        const PracticeSession* session = registry_.session(upperCaseCode(segments[1]));
        return session != nullptr ? meetingPage(*session, registry_.participants()) : unknownMeetingPage(segments[1]);
    }
    return api_.handle(request, target, now);
}

void PracticeServer::noteDelivery(std::uint64_t exchange, bool delivered) {
    const std::lock_guard lock(mutex_);
    log_.noteDelivery(exchange, delivered);
}

std::uint64_t PracticeServer::bend(BendRule rule) {
    const std::lock_guard lock(mutex_);
    return bender_.add(std::move(rule));
}

bool PracticeServer::endSession(std::string_view code) {
    const std::lock_guard lock(mutex_);
    return registry_.end(upperCaseCode(code));
}

void PracticeServer::reset() {
    const std::lock_guard lock(mutex_);
    registry_.reset();
    bender_.clear();
    log_.clear();
    reports_.clear();
}

std::vector<ReceivedExchange> PracticeServer::received() const {
    const std::lock_guard lock(mutex_);
    return log_.exchanges();
}

std::vector<PageReportLog::Entry> PracticeServer::pageReports() const {
    const std::lock_guard lock(mutex_);
    return {reports_.entries().begin(), reports_.entries().end()};
}

std::vector<PracticeSession> PracticeServer::sessions() const {
    const std::lock_guard lock(mutex_);
    return registry_.sessions();
}

std::vector<PracticeParticipant> PracticeServer::participants() const {
    const std::lock_guard lock(mutex_);
    return registry_.participants();
}

}  // namespace vantrel::practice
