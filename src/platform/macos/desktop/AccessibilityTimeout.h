#pragma once

#include "platform/desktop/Accessibility.h"

namespace vantrel::macos {

/// While one exists, this process's calls to applications that do not answer are limited to
/// accessibilityTimeoutUnderTap, and further ones are made only after accessibilityPauseUnderTap. Created and destroyed
/// on the main thread.
class AccessibilityTimeout {
  public:
    AccessibilityTimeout();
    ~AccessibilityTimeout();
    AccessibilityTimeout(const AccessibilityTimeout&) = delete;
    AccessibilityTimeout& operator=(const AccessibilityTimeout&) = delete;

    /// Whether a call to the process must fail at once. Any thread.
    static bool refuses(ProcessIdentifier process, double uptime);
    /// A call to the process has failed after `seconds`. Any thread.
    static void noteFailure(ProcessIdentifier process, double seconds, double uptime);
};

}  // namespace vantrel::macos
