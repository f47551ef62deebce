#include "practice/bodies/JsonBody.h"

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace vantrel::practice {

namespace {

bool isNestedTooDeeply(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (inString) {
            if (character == '\\') ++index;
            if (character == '"') inString = false;
        } else if (character == '"') {
            inString = true;
        } else if (character == '[' || character == '{') {
            if (++depth > deepestNesting) return true;
        } else if (character == ']' || character == '}') {
            --depth;
        }
    }
    return false;
}

}  // namespace

std::variant<nlohmann::json, BodyError> jsonBody(std::string_view body) {
    if (isNestedTooDeeply(body)) {
        return BodyError{"the body is nested more than " + std::to_string(deepestNesting) + " deep"};
    }
    nlohmann::json value = nlohmann::json::parse(body, nullptr, false);
    if (value.is_discarded()) return BodyError{"the body is not JSON"};
    return value;
}

}  // namespace vantrel::practice
