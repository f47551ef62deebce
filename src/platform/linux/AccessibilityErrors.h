#pragma once

#include "platform/Accessibility.h"

namespace vantrel::linuxdesktop {

/// AXError, the values that come about here.
inline constexpr AccessibilityError accessibilityFailure = -25200;
inline constexpr AccessibilityError accessibilityIllegalArgument = -25201;
/// The window is gone.
inline constexpr AccessibilityError accessibilityInvalidElement = -25202;
/// The application is gone.
inline constexpr AccessibilityError accessibilityCannotComplete = -25204;
inline constexpr AccessibilityError accessibilityAttributeUnsupported = -25205;
inline constexpr AccessibilityError accessibilityActionUnsupported = -25206;
inline constexpr AccessibilityError accessibilityNoValue = -25212;

}  // namespace vantrel::linuxdesktop
