#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <variant>

#include "practice/bodies/BodyError.h"

namespace vantrel::practice {

/// The maximum nesting of a body. None needs more than three.
constexpr int deepestNesting = 16;

/// A body read as JSON. Deep nesting is refused before parsing: each level would cost memory and time.
std::variant<nlohmann::json, BodyError> jsonBody(std::string_view body);

}  // namespace vantrel::practice
