#pragma once

namespace vantrel::macos {

/// Holds this process's calls to applications that do not answer to accessibilityTimeoutUnderTap, as long as one lives.
/// Main thread.
class AccessibilityTimeout {
  public:
    AccessibilityTimeout();
    ~AccessibilityTimeout();
    AccessibilityTimeout(const AccessibilityTimeout&) = delete;
    AccessibilityTimeout& operator=(const AccessibilityTimeout&) = delete;
};

}  // namespace vantrel::macos
