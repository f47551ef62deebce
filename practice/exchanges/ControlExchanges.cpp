#include "practice/exchanges/ControlExchanges.h"

#include <nlohmann/json.hpp>
#include <set>
#include <utility>
#include <variant>

#include "practice/configuration/SessionCode.h"
#include "practice/messages/Base64.h"
#include "practice/messages/JsonReply.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;

bool isUtf8(const std::string& bytes) {
    try {
        // Writing is where the library looks at the bytes.
        return !json(bytes).dump().empty();
    } catch (const json::exception&) {
        return false;
    }
}

json jsonOf(const ReceivedExchange& exchange) {
    json value{{"number", exchange.number},     {"time", exchange.time},          {"method", exchange.request.method},
               {"path", exchange.request.path}, {"headers", json::array()},       {"status", exchange.status},
               {"bent", exchange.bent},         {"delivered", exchange.delivered}};
    for (const auto& [name, text] : exchange.request.headers) {
        value["headers"].push_back(json::array({name, text}));
    }
    if (isUtf8(exchange.request.body)) {
        value["body"] = exchange.request.body;
    } else {
        value["bodyBase64"] = toBase64(exchange.request.body);
    }
    return value;
}

json jsonOf(const PracticeParticipant& participant) {
    json value{{"userToken", participant.token},
               {"fullName", participant.fullName},
               {"email", participant.email},
               {"platform", participant.platform},
               {"clientVersion", participant.clientVersion},
               {"joinedAt", participant.joinedAt},
               {"leftAt", participant.leftAt ? json(*participant.leftAt) : json()},
               {"heartbeats", json::array()},
               {"violations", json::array()}};
    for (const ReceivedHeartbeat& heartbeat : participant.heartbeats) {
        value["heartbeats"].push_back({{"receivedAt", heartbeat.receivedAt},
                                       {"timestamp", heartbeat.timestamp},
                                       {"lockdownActive", heartbeat.lockdownActive},
                                       {"meetConnected", heartbeat.meetConnected},
                                       {"disconnecting", heartbeat.disconnecting}});
    }
    for (const ReceivedViolation& violation : participant.violations) {
        value["violations"].push_back({{"receivedAt", violation.receivedAt},
                                       {"type", violation.type},
                                       {"detail", violation.detail},
                                       {"at", violation.at}});
    }
    return value;
}

json jsonOf(const PageView& view) {
    return {{"kind", "view"},          {"width", view.width},
            {"height", view.height},   {"fullScreen", view.fullScreen},
            {"visible", view.visible}, {"focused", view.focused}};
}

json jsonOf(const PageOpened& opened) {
    json value = jsonOf(static_cast<const PageView&>(opened));
    value["kind"] = "opened";
    return value;
}

json jsonOf(const PageKey& key) {
    return {{"kind", "key"},      {"key", key.key}, {"code", key.code}, {"ctrl", key.ctrl},
            {"shift", key.shift}, {"alt", key.alt}, {"meta", key.meta}, {"repeat", key.repeat}};
}

json jsonOf(const PageText& text) {
    return {{"kind", "text"}, {"text", text.text}};
}

json jsonOf(const PageMessage& message) {
    return {{"kind", "message"}, {"text", message.text}};
}

}  // namespace

ControlExchanges::ControlExchanges(SessionRegistry& registry, ReplyBender& bender, ExchangeLog& log,
                                   PageReportLog& reports)
    : registry_(registry), bender_(bender), log_(log), reports_(reports) {}

bool ControlExchanges::isControl(const RequestTarget& target) {
    return !target.segments().empty() && target.segments().front() == "control";
}

PracticeReply ControlExchanges::handle(const PracticeRequest& request, const RequestTarget& target) {
    const auto& segments = target.segments();
    const bool isPost = request.method == "POST";
    const bool isGet = request.method == "GET";
    if (target.path() == "/control/bend") return isPost ? bend(request.body) : methodNotAllowed("POST");
    if (target.path() == "/control/reset") return isPost ? reset(request.body) : methodNotAllowed("POST");
    if (target.path() == "/control/received") return isGet ? received() : methodNotAllowed("GET");
    if (target.path() == "/control/reports") return isGet ? reports() : methodNotAllowed("GET");
    if (target.path() == "/control/state") return isGet ? state() : methodNotAllowed("GET");
    if (segments.size() == 3 && segments[1] == "end") return isPost ? end(segments[2]) : methodNotAllowed("POST");
    return notFound();
}

PracticeReply ControlExchanges::bend(const std::string& body) {
    auto rule = BendRule::read(body);
    if (const auto* error = std::get_if<BodyError>(&rule)) return errorReply(400, "invalid_bend", error->message);
    return jsonReply(200, {{"rule", bender_.add(std::move(std::get<BendRule>(rule)))}});
}

PracticeReply ControlExchanges::reset(const std::string& body) {
    static const std::set<std::string> everything{"bends", "received", "reports", "sessions"};
    std::set<std::string> chosen = everything;
    if (!body.empty()) {
        const json value = json::parse(body, nullptr, false);
        if (!value.is_object() || value.size() != 1 || !value.contains("only") || !value["only"].is_array()) {
            return errorReply(400, "invalid_reset", "the body is not {\"only\": [...]}");
        }
        chosen.clear();
        for (const json& name : value["only"]) {
            if (!name.is_string() || everything.count(name.get<std::string>()) == 0) {
                return errorReply(400, "invalid_reset",
                                  "only \"bends\", \"received\", \"reports\" and \"sessions\" can be reset");
            }
            chosen.insert(name.get<std::string>());
        }
    }
    if (chosen.count("bends") != 0) bender_.clear();
    if (chosen.count("received") != 0) log_.clear();
    if (chosen.count("reports") != 0) reports_.clear();
    if (chosen.count("sessions") != 0) registry_.reset();
    return jsonReply(200, {{"reset", chosen}});
}

PracticeReply ControlExchanges::received() const {
    json list = json::array();
    for (const ReceivedExchange& exchange : log_.exchanges()) list.push_back(jsonOf(exchange));
    return jsonReply(200, list);
}

PracticeReply ControlExchanges::reports() const {
    json list = json::array();
    for (const PageReportLog::Entry& entry : reports_.entries()) {
        json value = std::visit([](const auto& content) { return jsonOf(content); }, entry.report.content);
        value["time"] = entry.time;
        value["session"] = entry.session;
        value["page"] = entry.page;
        value["number"] = entry.report.number;
        list.push_back(std::move(value));
    }
    return jsonReply(200, list);
}

PracticeReply ControlExchanges::end(const std::string& code) {
    const std::string upper = upperCaseCode(code);
    if (!registry_.end(upper)) return errorReply(404, "session_not_found");
    return jsonReply(200, {{"code", upper}, {"status", textOf(SessionStatus::ended)}});
}

PracticeReply ControlExchanges::state() const {
    json sessions = json::array();
    for (const PracticeSession& session : registry_.sessions()) {
        json participants = json::array();
        for (const PracticeParticipant& participant : registry_.participants()) {
            if (participant.sessionCode == session.code) participants.push_back(jsonOf(participant));
        }
        sessions.push_back({{"code", session.code},
                            {"title", session.title},
                            {"status", textOf(session.status)},
                            {"participants", std::move(participants)}});
    }
    json bends = json::array();
    for (const ReplyBender::Entry& entry : bender_.entries()) {
        bends.push_back({{"rule", entry.number},
                         {"method", entry.rule.method},
                         {"path", entry.rule.path},
                         {"used", entry.used},
                         {"times", entry.rule.times ? json(*entry.rule.times) : json()}});
    }
    return jsonReply(200, {{"sessions", std::move(sessions)}, {"bends", std::move(bends)}});
}

}  // namespace vantrel::practice
