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
      access_(configuration_),
      registry_(configuration_.sessions, ParticipantPresence(configuration_.contactLostAfterSeconds)),
      version_(configuration_.version),
      api_(registry_, version_, configuration_),
      control_(registry_, replyRules_, log_, reports_),
      trainer_(registry_, configuration_),
      meeting_(registry_, reports_) {}

PracticeReply PracticeServer::handle(const PracticeRequest& request) {
    if (request.body.size() > PracticeRequest::largestBody) {
        return handle({request.method, request.path, request.headers, {}, true});
    }
    const RequestTarget target(request.path);
    const double now = clock_();
    if (isAside(target)) return request.bodyIsTooLarge ? bodyTooLarge() : aside(request, target, now);
    PracticeReply reply = request.bodyIsTooLarge ? bodyTooLarge() : exchange(request, target, now);
    const auto rule = replyRules_.ruleFor(request);
    if (rule) rule->applyTo(reply);
    reply.exchange = log_.record(request, reply, rule.has_value(), now);
    return reply;
}

bool PracticeServer::isAside(const RequestTarget& target) {
    return PageFileExchanges::isPageFile(target) || ControlExchanges::isControl(target) ||
           TrainerExchanges::isTrainer(target) || MeetingExchanges::isMeeting(target);
}

PracticeReply PracticeServer::aside(const PracticeRequest& request, const RequestTarget& target, double now) {
    if (PageFileExchanges::isPageFile(target)) return PageFileExchanges::handle(request, target);
    const bool isControl = ControlExchanges::isControl(target);
    if (isControl || TrainerExchanges::isTrainer(target)) {
        if (auto refusal = access_.refusal(request)) return *std::move(refusal);
        return isControl ? control_.handle(request, target) : trainer_.handle(request, target, now);
    }
    return meeting_.handle(request, target, now);
}

PracticeReply PracticeServer::exchange(const PracticeRequest& request, const RequestTarget& target, double now) {
    const auto& segments = target.segments();
    if (segments.size() == 2 && segments[0] == "meet") {
        if (request.method != "GET") return methodNotAllowed("GET");
        const auto session = registry_.session(upperCaseCode(segments[1]));
        return session ? meetingPage(*session, registry_.participants()) : unknownMeetingPage(segments[1]);
    }
    return api_.handle(request, target, now);
}

void PracticeServer::noteDelivery(std::uint64_t exchange, bool delivered) {
    log_.noteDelivery(exchange, delivered);
}

std::optional<std::uint64_t> PracticeServer::addReplyRule(ReplyRule rule) {
    return replyRules_.add(std::move(rule));
}

bool PracticeServer::endSession(std::string_view code) {
    return registry_.end(upperCaseCode(code));
}

bool PracticeServer::addSession(PracticeSession session) {
    return registry_.add(std::move(session));
}

void PracticeServer::setVersion(VersionConfiguration version) {
    version_.set(std::move(version));
}

void PracticeServer::reset() {
    registry_.reset();
    replyRules_.clear();
    log_.clear();
    reports_.clear();
}

std::vector<ReceivedExchange> PracticeServer::received() const {
    return log_.exchanges();
}

std::vector<PageReportLog::Entry> PracticeServer::pageReports() const {
    return reports_.entries();
}

std::vector<PracticeSession> PracticeServer::sessions() const {
    return registry_.sessions();
}

std::vector<PracticeParticipant> PracticeServer::participants() const {
    return registry_.participants();
}

ParticipantHistory PracticeServer::history(std::uint64_t participant) const {
    return registry_.history(participant);
}

}  // namespace vantrel::practice
