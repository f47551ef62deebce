#pragma once

#include <string_view>

#include "tests/macos/standins/runtime/Layout.h"

namespace vantrel::standins {

/// The one pointer for selectors of that name. Any thread.
Selector selector(std::string_view name);

/// The method that an object of that class has for the selector; null when there is none. Any thread.
Implementation method(const Class* cls, Selector name);
/// The same, without what it inherits.
Implementation ownMethod(const Class* cls, Selector name);

bool isKindOf(const Class* cls, const Class* wanted);
const char* nameOf(const Class* cls);

/// Prints why and ends the process, as the system does for a programming error.
[[noreturn]] void fatal(std::string_view what);

}  // namespace vantrel::standins
