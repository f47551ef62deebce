#include "practice/bodies/BodyShape.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace vantrel::practice {

namespace {

bool hasType(const nlohmann::json& value, BodyShape::Type type) {
    switch (type) {
        case BodyShape::Type::string:
            return value.is_string();
        case BodyShape::Type::boolean:
            return value.is_boolean();
        case BodyShape::Type::array:
            return value.is_array();
        case BodyShape::Type::count:
            return value.is_number_unsigned();
    }
    return false;
}

std::string typeText(BodyShape::Type type) {
    switch (type) {
        case BodyShape::Type::string:
            return "a string";
        case BodyShape::Type::boolean:
            return "a boolean";
        case BodyShape::Type::array:
            return "an array";
        case BodyShape::Type::count:
            return "a whole number from 0 on";
    }
    return {};
}

}  // namespace

std::optional<BodyError> BodyShape::wrong(const nlohmann::json& value, const std::string& name) const {
    if (!value.is_object()) return BodyError{name + " is not a JSON object"};
    for (const Key& key : keys_) {
        const auto member = value.find(key.name);
        if (member == value.end()) return BodyError{name + " lacks \"" + key.name + "\""};
        if (!hasType(*member, key.type)) return BodyError{"\"" + key.name + "\" is not " + typeText(key.type)};
    }
    for (const auto& member : value.items()) {
        const bool known =
            std::any_of(keys_.begin(), keys_.end(), [&](const Key& key) { return key.name == member.key(); });
        if (!known) return BodyError{name + " holds an unknown key \"" + member.key() + "\""};
    }
    return std::nullopt;
}

bool isISO8601Time(std::string_view text) {
    constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ";
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char character, char wanted) {
        return wanted == 'd' ? character >= '0' && character <= '9' : character == wanted;
    });
}

}  // namespace vantrel::practice
