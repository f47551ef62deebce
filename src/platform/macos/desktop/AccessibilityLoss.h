#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include "platform/threads/Block.h"

namespace vantrel::macos {

/// Tells that the client has lost the Accessibility permission, as soon as the system refuses one of its calls for
/// that. Nobody asks for it: in a lockdown the rules look at the browser's windows every 1.5 seconds. Created and
/// destroyed on the main thread, where the block runs, perhaps more than once.
class AccessibilityLoss {
  public:
    explicit AccessibilityLoss(Block told);
    ~AccessibilityLoss();
    AccessibilityLoss(const AccessibilityLoss&) = delete;
    AccessibilityLoss& operator=(const AccessibilityLoss&) = delete;

    /// A call has been answered so. Any thread.
    static void note(AXError error);

  private:
    static void tell();

    const Block told_;
};

}  // namespace vantrel::macos
