#include "practice/bodies/JoinBody.h"

#include <nlohmann/json.hpp>

#include "practice/bodies/BodyShape.h"
#include "practice/bodies/JsonBody.h"

namespace vantrel::practice {

std::variant<JoinBody, BodyError> JoinBody::read(const std::string& body) {
    using Type = BodyShape::Type;
    static const BodyShape shape({{"fullName", Type::string},
                                  {"email", Type::string},
                                  {"platform", Type::string},
                                  {"clientVersion", Type::string}});
    const auto parsed = jsonBody(body);
    if (const auto* error = std::get_if<BodyError>(&parsed)) return *error;
    const auto& value = std::get<nlohmann::json>(parsed);
    if (const auto error = shape.wrong(value, "the body")) return *error;

    JoinBody join{value["fullName"], value["email"], value["platform"], value["clientVersion"]};
    if (join.fullName.empty()) return BodyError{"\"fullName\" is empty"};
    if (join.email.empty()) return BodyError{"\"email\" is empty"};
    if (join.platform != "darwin") return BodyError{"\"platform\" is not \"darwin\""};
    return join;
}

}  // namespace vantrel::practice
