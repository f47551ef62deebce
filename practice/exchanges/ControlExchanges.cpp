#include "practice/exchanges/ControlExchanges.h"

#include <cstddef>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "practice/bodies/JsonBody.h"
#include "practice/configuration/SessionCode.h"
#include "practice/exchanges/ControlJson.h"
#include "practice/messages/JsonReply.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;

/// How many heartbeats and violations of each participant the whole state lists.
constexpr std::size_t newestListed = 50;
constexpr std::size_t everything = std::numeric_limits<std::size_t>::max();

/// Written entry by entry: all entries as JSON values at once would need many times the memory.
template <typename Entry>
PracticeReply listReply(const std::vector<Entry>& entries) {
    PracticeReply reply;
    reply.body = "[";
    for (const Entry& entry : entries) {
        if (reply.body.size() > 1) reply.body += ',';
        reply.body += jsonText(jsonOf(entry));
    }
    reply.body += "]";
    return reply;
}

}  // namespace

ControlExchanges::ControlExchanges(SessionRegistry& registry, ReplyRules& replyRules, ExchangeLog& log,
                                   PageReportLog& reports)
    : registry_(registry), replyRules_(replyRules), log_(log), reports_(reports) {}

bool ControlExchanges::isControl(const RequestTarget& target) {
    return !target.segments().empty() && target.segments().front() == "control";
}

PracticeReply ControlExchanges::handle(const PracticeRequest& request, const RequestTarget& target) {
    const auto& segments = target.segments();
    const bool isPost = request.method == "POST";
    const bool isGet = request.method == "GET";
    if (target.path() == "/control/reply-rule") return isPost ? addReplyRule(request.body) : methodNotAllowed("POST");
    if (target.path() == "/control/reset") return isPost ? reset(request.body) : methodNotAllowed("POST");
    if (target.path() == "/control/received") return isGet ? received() : methodNotAllowed("GET");
    if (target.path() == "/control/reports") return isGet ? reports() : methodNotAllowed("GET");
    if (target.path() == "/control/state") return isGet ? state() : methodNotAllowed("GET");
    if (segments.size() == 3 && segments[1] == "participants") {
        return isGet ? participant(segments[2]) : methodNotAllowed("GET");
    }
    if (segments.size() == 3 && segments[1] == "end") return isPost ? end(segments[2]) : methodNotAllowed("POST");
    return notFound();
}

PracticeReply ControlExchanges::addReplyRule(const std::string& body) {
    auto rule = ReplyRule::read(body);
    if (const auto* error = std::get_if<BodyError>(&rule)) return errorReply(400, "invalid_reply_rule", error->message);
    const auto number = replyRules_.add(std::move(std::get<ReplyRule>(rule)));
    if (!number) {
        return errorReply(400, "invalid_reply_rule",
                          "there are " + std::to_string(ReplyRules::rulesKept) + " rules already");
    }
    return jsonReply(200, {{"rule", *number}});
}

PracticeReply ControlExchanges::reset(const std::string& body) {
    static const std::set<std::string> all{"replyRules", "received", "reports", "sessions"};
    std::set<std::string> chosen = all;
    if (!body.empty()) {
        const auto parsed = jsonBody(body);
        const json value = std::holds_alternative<json>(parsed) ? std::get<json>(parsed) : json();
        if (!value.is_object() || value.size() != 1 || !value.contains("only") || !value["only"].is_array()) {
            return errorReply(400, "invalid_reset", "the body is not {\"only\": [...]}");
        }
        chosen.clear();
        for (const json& name : value["only"]) {
            if (!name.is_string() || all.count(name.get<std::string>()) == 0) {
                return errorReply(400, "invalid_reset",
                                  "only \"replyRules\", \"received\", \"reports\" and \"sessions\" can be reset");
            }
            chosen.insert(name.get<std::string>());
        }
    }
    if (chosen.count("replyRules") != 0) replyRules_.clear();
    if (chosen.count("received") != 0) log_.clear();
    if (chosen.count("reports") != 0) reports_.clear();
    if (chosen.count("sessions") != 0) registry_.reset();
    return jsonReply(200, {{"reset", chosen}});
}

PracticeReply ControlExchanges::received() const {
    return listReply(log_.exchanges());
}

PracticeReply ControlExchanges::reports() const {
    return listReply(reports_.entries());
}

PracticeReply ControlExchanges::end(const std::string& code) {
    const std::string upper = upperCaseCode(code);
    if (!registry_.end(upper)) return errorReply(404, "session_not_found");
    return jsonReply(200, {{"code", upper}, {"status", textOf(SessionStatus::ended)}});
}

PracticeReply ControlExchanges::participant(const std::string& token) const {
    const auto participant = registry_.participant(token);
    if (!participant) return errorReply(404, "participant_not_found");
    return jsonReply(200, jsonOf(*participant, registry_.history(participant->number), everything));
}

PracticeReply ControlExchanges::state() const {
    json sessions = json::array();
    for (const SessionRegistry::SessionState& state : registry_.states()) {
        json participants = json::array();
        for (const PracticeParticipant& participant : state.participants) {
            participants.push_back(jsonOf(participant, registry_.history(participant.number), newestListed));
        }
        sessions.push_back({{"code", state.session.code},
                            {"title", state.session.title},
                            {"status", textOf(state.session.status)},
                            {"participants", std::move(participants)}});
    }
    json rules = json::array();
    for (const ReplyRules::Entry& entry : replyRules_.entries()) rules.push_back(jsonOf(entry));
    return jsonReply(200, {{"sessions", std::move(sessions)}, {"replyRules", std::move(rules)}});
}

}  // namespace vantrel::practice
