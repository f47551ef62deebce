#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/network/JSON.h"

namespace vantrel {

/// Reading of values by key with a type check: a key that is absent or holds another type is empty.
std::optional<std::string> stringValue(const JSONObject& object, std::string_view key);
std::optional<bool> booleanValue(const JSONObject& object, std::string_view key);

}  // namespace vantrel
