#include "practice/exchanges/MeetingExchanges.h"

#include <nlohmann/json.hpp>
#include <string>
#include <variant>

#include "practice/bodies/PageReportsBody.h"
#include "practice/configuration/SessionCode.h"
#include "practice/messages/JsonReply.h"

namespace vantrel::practice {

MeetingExchanges::MeetingExchanges(const SessionRegistry& registry, PageReportLog& reports)
    : registry_(registry), reports_(reports) {}

bool MeetingExchanges::isMeeting(const RequestTarget& target) {
    const auto& segments = target.segments();
    return segments.size() == 3 && segments[0] == "meet" && (segments[2] == "reports" || segments[2] == "state");
}

PracticeReply MeetingExchanges::handle(const PracticeRequest& request, const RequestTarget& target, double now) {
    const std::string code = upperCaseCode(target.segments()[1]);
    if (target.segments()[2] == "state") return request.method == "GET" ? state(code) : methodNotAllowed("GET");
    return request.method == "POST" ? addReports(code, request.body, now) : methodNotAllowed("POST");
}

PracticeReply MeetingExchanges::state(const std::string& code) const {
    const auto session = registry_.session(code);
    if (!session) return errorReply(404, "session_not_found");
    PracticeReply reply = jsonReply(200, {{"status", textOf(session->status)}});
    reply.headers.emplace_back("Cache-Control", "no-store");
    return reply;
}

PracticeReply MeetingExchanges::addReports(const std::string& code, const std::string& text, double now) {
    if (!registry_.session(code)) return errorReply(404, "session_not_found");
    const auto body = PageReportsBody::read(text);
    if (const auto* error = std::get_if<BodyError>(&body)) return errorReply(400, "invalid_report", error->message);
    const PageReportsBody& reports = std::get<PageReportsBody>(body);
    reports_.add(code, reports, now);
    return jsonReply(200, {{"reports", reports.reports.size()}});
}

}  // namespace vantrel::practice
