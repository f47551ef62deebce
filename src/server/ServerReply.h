#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/network/JSON.h"

namespace vantrel {

/// These read a value by key and check its type. Empty if the key is absent or its value has another type.
std::optional<std::string> stringValue(const JSONObject& object, std::string_view key);
std::optional<bool> booleanValue(const JSONObject& object, std::string_view key);

}  // namespace vantrel
