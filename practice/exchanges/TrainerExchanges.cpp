#include "practice/exchanges/TrainerExchanges.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "practice/configuration/SessionCode.h"
#include "practice/messages/JsonReply.h"
#include "practice/pages/TrainerPage.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;

json jsonOf(const PracticeParticipant& participant, Presence presence) {
    json value{{"number", participant.number},
               {"fullName", participant.fullName},
               {"email", participant.email},
               {"clientVersion", participant.clientVersion},
               {"joinedAt", participant.joinedAt},
               {"presence", textOf(presence)},
               {"leftAt", participant.leftAt ? json(*participant.leftAt) : json()},
               {"lastHeartbeat", nullptr},
               {"violationCount", participant.violationCount}};
    if (const auto& last = participant.lastHeartbeat) {
        value["lastHeartbeat"] = {{"receivedAt", last->receivedAt},
                                  {"lockdownActive", last->lockdownActive},
                                  {"meetConnected", last->meetConnected}};
    }
    return value;
}

}  // namespace

TrainerExchanges::TrainerExchanges(SessionRegistry& registry, const PracticeConfiguration& configuration)
    : registry_(registry), presence_(configuration.contactLostAfterSeconds) {}

bool TrainerExchanges::isTrainer(const RequestTarget& target) {
    return target.path() == "/" || (!target.segments().empty() && target.segments().front() == "trainer");
}

PracticeReply TrainerExchanges::handle(const PracticeRequest& request, const RequestTarget& target, double now) {
    const auto& segments = target.segments();
    const bool isPost = request.method == "POST";
    const bool isGet = request.method == "GET";
    if (target.path() == "/") return isGet ? trainerPage() : methodNotAllowed("GET");
    if (target.path() == "/trainer/state") return isGet ? state(now) : methodNotAllowed("GET");
    if (segments.size() == 3 && segments[1] == "end") return isPost ? end(segments[2]) : methodNotAllowed("POST");
    return notFound();
}

PracticeReply TrainerExchanges::state(double now) const {
    json sessions = json::array();
    for (const SessionRegistry::SessionState& state : registry_.states()) {
        json participants = json::array();
        for (const PracticeParticipant& participant : state.participants) {
            participants.push_back(jsonOf(participant, presence_.of(participant, now)));
        }
        json violations = json::array();
        for (const SessionRegistry::SessionViolation& entry : state.violations) {
            violations.push_back({{"participant", entry.participant},
                                  {"fullName", entry.fullName},
                                  {"type", entry.violation.type},
                                  {"detail", entry.violation.detail},
                                  {"at", entry.violation.at.text()},
                                  {"receivedAt", entry.violation.receivedAt}});
        }
        sessions.push_back({{"code", state.session.code},
                            {"title", state.session.title},
                            {"status", textOf(state.session.status)},
                            {"participants", std::move(participants)},
                            {"violationCount", state.violationCount},
                            {"violations", std::move(violations)}});
    }
    PracticeReply reply = jsonReply(200, {{"now", now}, {"sessions", std::move(sessions)}});
    reply.headers.emplace_back("Cache-Control", "no-store");
    return reply;
}

PracticeReply TrainerExchanges::end(const std::string& code) {
    const std::string upper = upperCaseCode(code);
    if (!registry_.end(upper)) return errorReply(404, "session_not_found");
    return jsonReply(200, {{"code", upper}, {"status", textOf(SessionStatus::ended)}});
}

}  // namespace vantrel::practice
