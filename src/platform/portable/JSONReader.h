#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/network/JSON.h"

namespace vantrel {

/// Reads one array or object of at most `maximumDepth` levels and `maximumValues` values. Empty for anything else.
/// Never throws. That depth bounds its use of the stack, whatever the bytes are.
std::optional<JSONValue> readJSON(std::string_view bytes, std::size_t maximumDepth, std::size_t maximumValues);

}  // namespace vantrel
