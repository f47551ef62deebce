#pragma once

#include "platform/desktop/Accessibility.h"

namespace vantrel::macos {

/// As long as one lives, this process's calls to applications that do not answer are held to
/// accessibilityTimeoutUnderTap, and others follow only after accessibilityPauseUnderTap. Made and destroyed on the
/// main thread.
class AccessibilityTimeout {
  public:
    AccessibilityTimeout();
    ~AccessibilityTimeout();
    AccessibilityTimeout(const AccessibilityTimeout&) = delete;
    AccessibilityTimeout& operator=(const AccessibilityTimeout&) = delete;

    /// Whether a call to the process has to fail at once. Any thread.
    static bool refuses(ProcessIdentifier process, double uptime);
    /// A call to the process has failed after so many seconds. Any thread.
    static void noteFailure(ProcessIdentifier process, double seconds, double uptime);
};

}  // namespace vantrel::macos
