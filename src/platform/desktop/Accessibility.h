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

/// The value of an attribute. std::monostate means a type that is not used here. Elements are never null. Positions
/// count from the top left of the primary display.
using AccessibilityValue = std::variant<std::monostate, bool, Point, Size, std::shared_ptr<AccessibilityElement>,
                                        std::vector<std::shared_ptr<AccessibilityElement>>>;

/// AXError: 0 is success, failures are negative (-25200 and below).
using AccessibilityError = std::int32_t;
inline constexpr AccessibilityError accessibilitySuccess = 0;
inline constexpr AccessibilityError accessibilityFailure = -25200;
inline constexpr AccessibilityError accessibilityIllegalArgument = -25201;
/// The element's object is gone.
inline constexpr AccessibilityError accessibilityInvalidElement = -25202;
/// The application is gone or does not answer.
inline constexpr AccessibilityError accessibilityCannotComplete = -25204;
inline constexpr AccessibilityError accessibilityAttributeUnsupported = -25205;
inline constexpr AccessibilityError accessibilityActionUnsupported = -25206;
/// This process does not have the permission.
inline constexpr AccessibilityError accessibilityDisabled = -25211;
inline constexpr AccessibilityError accessibilityNoValue = -25212;

/// Timeouts in seconds for a call to an application that does not answer. The first is the system's default. The second
/// holds while an AccessibilityTimeLimit exists (AXUIElementSetMessagingTimeout): if a keyboard tap's main thread does
/// not answer for about a second, the system disables the tap for good.
inline constexpr double accessibilityTimeout = 6;
inline constexpr double limitedAccessibilityTimeout = 0.5;
/// Under a limit, further calls to that application fail at once for this many seconds, because the main thread makes
/// several in a row.
inline constexpr double limitedAccessibilityPause = 1;

/// AXUIElement. Any thread. A call to an application that does not answer blocks until its timeout and returns
/// accessibilityCannotComplete.
class AccessibilityElement {
  public:
    virtual ~AccessibilityElement() = default;

    /// AXUIElementCopyAttributeValue: the value, or the error.
    virtual std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const = 0;
    /// AXUIElementSetAttributeValue.
    virtual AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) = 0;
    /// AXUIElementPerformAction.
    virtual AccessibilityError performAction(std::string_view name) = 0;
};

/// While one exists, calls of this process to applications that do not answer are given up after
/// limitedAccessibilityTimeout, with a pause of limitedAccessibilityPause. Main thread.
class AccessibilityTimeLimit {
  public:
    virtual ~AccessibilityTimeLimit() = default;

    /// From now on there is no pause, and a value that is not answered is asked for once more. For when no keyboard tap
    /// depends on the main thread any more.
    virtual void insist() = 0;
};

/// The elements of other applications. Any thread.
class Accessibility {
  public:
    virtual ~Accessibility() = default;

    /// AXUIElementCreateApplication. Never null, even if there is no such process.
    virtual std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const = 0;

    /// Main thread. One at a time.
    [[nodiscard]] virtual std::unique_ptr<AccessibilityTimeLimit> limitTime() = 0;
};

}  // namespace vantrel
