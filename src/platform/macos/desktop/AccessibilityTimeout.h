#pragma once

#include "platform/desktop/Accessibility.h"

namespace vantrel::macos {

/// Holds for the whole process. Created and destroyed on the main thread.
class AccessibilityTimeout final : public AccessibilityTimeLimit {
  public:
    AccessibilityTimeout();
    ~AccessibilityTimeout() override;
    AccessibilityTimeout(const AccessibilityTimeout&) = delete;
    AccessibilityTimeout& operator=(const AccessibilityTimeout&) = delete;

    void insist() override;

    /// Whether a call to the process must fail at once. Any thread.
    static bool refuses(ProcessIdentifier process, double uptime);
    /// Whether a value that was not answered is asked for once more. Any thread.
    static bool insists();
    /// A call to the process has failed after `seconds`. Any thread.
    static void noteFailure(ProcessIdentifier process, double seconds, double uptime);
};

}  // namespace vantrel::macos
