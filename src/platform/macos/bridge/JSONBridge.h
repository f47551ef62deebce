#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <optional>

#include "platform/network/JSON.h"

namespace vantrel::macos {

/// The most levels of arrays and objects that are read or written.
inline constexpr std::size_t deepestJSON = 512;

/// Converts what NSJSONSerialization has read. Empty for more levels than deepestJSON. Any thread.
std::optional<JSONValue> jsonValue(id _Nullable object);

/// Converts to what NSJSONSerialization can write. Nil for a text that is not UTF-8 or more levels than deepestJSON.
/// Any thread.
id _Nullable foundationObject(const JSONValue& value, std::size_t depth = 0);

}  // namespace vantrel::macos
