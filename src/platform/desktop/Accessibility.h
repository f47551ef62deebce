#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/apps/ProcessLauncher.h"
#include "platform/desktop/Geometry.h"

namespace vantrel {

class AccessibilityElement;

/// The value of an attribute. std::monostate stands for a type that is not used here; elements are never null.
/// Positions count from the top left of the primary display.
using AccessibilityValue = std::variant<std::monostate, bool, Point, Size, std::shared_ptr<AccessibilityElement>,
                                        std::vector<std::shared_ptr<AccessibilityElement>>>;

/// AXError: 0 is success, failures are negative (-25200 and below).
using AccessibilityError = std::int32_t;
inline constexpr AccessibilityError accessibilitySuccess = 0;
inline constexpr AccessibilityError accessibilityFailure = -25200;
inline constexpr AccessibilityError accessibilityIllegalArgument = -25201;
/// What the element stood for is gone.
inline constexpr AccessibilityError accessibilityInvalidElement = -25202;
/// The application is gone or does not answer.
inline constexpr AccessibilityError accessibilityCannotComplete = -25204;
inline constexpr AccessibilityError accessibilityAttributeUnsupported = -25205;
inline constexpr AccessibilityError accessibilityActionUnsupported = -25206;
/// This process has not got the permission.
inline constexpr AccessibilityError accessibilityDisabled = -25211;
inline constexpr AccessibilityError accessibilityNoValue = -25212;

/// Seconds after which a call to an application that does not answer gives up: the system's own, and those while a
/// keyboard tap of this process stands (AXUIElementSetMessagingTimeout). The system takes a tap away for good whose
/// main thread does not answer for about a second.
inline constexpr double accessibilityTimeout = 6;
inline constexpr double accessibilityTimeoutUnderTap = 0.5;
/// Seconds for which, while a tap stands, further calls to that application fail at once: the main thread makes several
/// in a row.
inline constexpr double accessibilityPauseUnderTap = 1;

/// AXUIElement. Any thread. A call to an application that does not answer blocks until its time-out and gives
/// accessibilityCannotComplete.
class AccessibilityElement {
  public:
    virtual ~AccessibilityElement() = default;

    /// AXUIElementCopyAttributeValue: the value, or why there is none.
    virtual std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const = 0;
    /// AXUIElementSetAttributeValue.
    virtual AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) = 0;
    /// AXUIElementPerformAction.
    virtual AccessibilityError performAction(std::string_view name) = 0;
};

/// The elements of other applications. Any thread.
class Accessibility {
  public:
    virtual ~Accessibility() = default;

    /// AXUIElementCreateApplication; never null, even for a process that does not exist.
    virtual std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const = 0;
};

}  // namespace vantrel
