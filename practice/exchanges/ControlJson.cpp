#include "practice/exchanges/ControlJson.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <variant>

#include "practice/messages/Base64.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;

bool isUtf8(const std::string& bytes) {
    try {
        // The library checks the bytes only when writing.
        return !json(bytes).dump().empty();
    } catch (const json::exception&) {
        return false;
    }
}

json jsonOf(const ReceivedHeartbeat& heartbeat) {
    return {{"receivedAt", heartbeat.receivedAt},
            {"timestamp", heartbeat.timestamp.text()},
            {"lockdownActive", heartbeat.lockdownActive},
            {"meetConnected", heartbeat.meetConnected},
            {"disconnecting", heartbeat.disconnecting}};
}

json jsonOf(const ReceivedViolation& violation) {
    return {{"receivedAt", violation.receivedAt},
            {"type", violation.type},
            {"detail", violation.detail},
            {"at", violation.at.text()}};
}

template <typename List>
json listOfNewest(const List& entries, std::size_t newest) {
    json list = json::array();
    for (std::size_t index = entries.size() > newest ? entries.size() - newest : 0; index < entries.size(); ++index) {
        list.push_back(jsonOf(entries[index]));
    }
    return list;
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

json jsonOf(const PageDevice& device) {
    return {{"kind", "device"}, {"device", device.device}, {"state", device.state}, {"detail", device.detail}};
}

}  // namespace

json jsonOf(const ReceivedExchange& exchange) {
    json value{{"number", exchange.number},     {"time", exchange.time},          {"method", exchange.request.method},
               {"path", exchange.request.path}, {"headers", json::array()},       {"status", exchange.status},
               {"changed", exchange.changed},   {"delivered", exchange.delivered}};
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

json jsonOf(const PageReportLog::Entry& entry) {
    json value = std::visit([](const auto& content) { return jsonOf(content); }, entry.report.content);
    value["time"] = entry.time;
    value["session"] = entry.session;
    value["page"] = entry.page;
    value["number"] = entry.report.number;
    return value;
}

json jsonOf(const ReplyRules::Entry& entry) {
    return {{"rule", entry.number},
            {"method", entry.rule.method},
            {"path", entry.rule.path},
            {"used", entry.used},
            {"times", entry.rule.times ? json(*entry.rule.times) : json()}};
}

json jsonOf(const PracticeParticipant& participant, const ParticipantHistory& history, std::size_t newest) {
    return {{"userToken", participant.token},
            {"fullName", participant.fullName},
            {"email", participant.email},
            {"platform", participant.platform},
            {"clientVersion", participant.clientVersion},
            {"joinedAt", participant.joinedAt},
            {"leftAt", participant.leftAt ? json(*participant.leftAt) : json()},
            {"heartbeatCount", participant.heartbeatCount},
            {"heartbeats", listOfNewest(history.heartbeats, newest)},
            {"violationCount", participant.violationCount},
            {"violations", listOfNewest(history.violations, newest)}};
}

}  // namespace vantrel::practice
