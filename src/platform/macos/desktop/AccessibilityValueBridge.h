#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include "platform/desktop/Accessibility.h"
#include "platform/macos/bridge/CFReference.h"

namespace vantrel::macos {

/// Converts an attribute's object. An application may answer with any type: null and types that are not used here
/// become std::monostate. Any thread.
AccessibilityValue accessibilityValue(CFTypeRef object);

/// The object to write for a value. Empty for a value that no attribute accepts. Any thread.
CFReference<CFTypeRef> accessibilityObject(const AccessibilityValue& value);

}  // namespace vantrel::macos
