#pragma once

#include <string_view>

#include "tests/macos/standins/runtime/Layout.h"

namespace vantrel::standins {

/// The only pointer for selectors of that name. Any thread.
Selector selector(std::string_view name);

/// The method of the class's objects for the selector. Null if there is none. Any thread.
Implementation method(const Class* cls, Selector name);
/// The same, without inherited methods.
Implementation ownMethod(const Class* cls, Selector name);

bool isKindOf(const Class* cls, const Class* wanted);
const char* nameOf(const Class* cls);

/// Prints the reason and ends the process, as the system does for a programming error.
[[noreturn]] void fatal(std::string_view what);

}  // namespace vantrel::standins
