#include "practice/bodies/JoinBody.h"

#include <nlohmann/json.hpp>

#include "practice/bodies/BodyShape.h"

namespace vantrel::practice {

std::variant<JoinBody, BodyError> JoinBody::read(const std::string& body) {
    using Type = BodyShape::Type;
    static const BodyShape shape({{"fullName", Type::string},
                                  {"email", Type::string},
                                  {"platform", Type::string},
                                  {"clientVersion", Type::string}});
    const nlohmann::json value = nlohmann::json::parse(body, nullptr, false);
    if (value.is_discarded()) return BodyError{"the body is not JSON"};
    if (const auto error = shape.wrong(value, "the body")) return *error;

    JoinBody join{value["fullName"], value["email"], value["platform"], value["clientVersion"]};
    if (join.fullName.empty()) return BodyError{"\"fullName\" is empty"};
    if (join.email.empty()) return BodyError{"\"email\" is empty"};
    if (join.platform != "darwin") return BodyError{"\"platform\" is not \"darwin\""};
    return join;
}

}  // namespace vantrel::practice
