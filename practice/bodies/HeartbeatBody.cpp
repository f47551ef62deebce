#include "practice/bodies/HeartbeatBody.h"

#include <nlohmann/json.hpp>

#include "practice/bodies/BodyShape.h"
#include "practice/bodies/JsonBody.h"

namespace vantrel::practice {

std::variant<HeartbeatBody, BodyError> HeartbeatBody::read(const std::string& body) {
    using Type = BodyShape::Type;
    static const BodyShape shape({{"sessionCode", Type::string},
                                  {"userToken", Type::string},
                                  {"timestamp", Type::string},
                                  {"platform", Type::string},
                                  {"clientVersion", Type::string},
                                  {"lockdownActive", Type::boolean},
                                  {"meetConnected", Type::boolean},
                                  {"violations", Type::array},
                                  {"disconnecting", Type::boolean}});
    static const BodyShape violationShape({{"type", Type::string}, {"detail", Type::string}, {"at", Type::string}});

    const auto parsed = jsonBody(body);
    if (const auto* error = std::get_if<BodyError>(&parsed)) return *error;
    const auto& value = std::get<nlohmann::json>(parsed);
    if (const auto error = shape.wrong(value, "the body")) return *error;

    HeartbeatBody heartbeat;
    heartbeat.sessionCode = value["sessionCode"];
    heartbeat.userToken = value["userToken"];
    heartbeat.timestamp = value["timestamp"];
    heartbeat.clientVersion = value["clientVersion"];
    heartbeat.lockdownActive = value["lockdownActive"];
    heartbeat.meetConnected = value["meetConnected"];
    heartbeat.disconnecting = value["disconnecting"];
    if (value["platform"] != "darwin") return BodyError{"\"platform\" is not \"darwin\""};
    if (!isISO8601Time(heartbeat.timestamp)) return BodyError{"\"timestamp\" is not an ISO 8601 time in UTC"};
    for (const nlohmann::json& item : value["violations"]) {
        if (const auto error = violationShape.wrong(item, "a violation")) return *error;
        Violation violation{item["type"], item["detail"], item["at"]};
        if (!isISO8601Time(violation.at)) return BodyError{"a violation's \"at\" is not an ISO 8601 time in UTC"};
        heartbeat.violations.push_back(std::move(violation));
    }
    return heartbeat;
}

}  // namespace vantrel::practice
