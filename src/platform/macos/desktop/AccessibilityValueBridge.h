#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include "platform/desktop/Accessibility.h"
#include "platform/macos/bridge/CFReference.h"

namespace vantrel::macos {

/// What an attribute's object says. An application may answer with an object of any type: those that are not used here,
/// and null, are std::monostate. Any thread.
AccessibilityValue accessibilityValue(CFTypeRef object);

/// The object to write for a value; empty for a value that no attribute takes. Any thread.
CFReference<CFTypeRef> accessibilityObject(const AccessibilityValue& value);

}  // namespace vantrel::macos
