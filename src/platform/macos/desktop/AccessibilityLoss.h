#pragma once

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/threads/Block.h"

namespace vantrel::macos {

/// Tells that the client has lost the Accessibility permission: as soon as the system refuses one of its calls for
/// that, and within betweenLooksForLostTrust seconds in any case, under alerts and menus too. It looks as long as it
/// lives, so it is for a keyboard tap that stands: one that outlives the permission can hold up all input. Created and
/// destroyed on the main thread, where the block runs. The block may destroy it.
class AccessibilityLoss {
  public:
    explicit AccessibilityLoss(Block told);
    ~AccessibilityLoss();
    AccessibilityLoss(const AccessibilityLoss&) = delete;
    AccessibilityLoss& operator=(const AccessibilityLoss&) = delete;

    /// A call has been answered so. Any thread.
    static void note(AXError error);

  private:
    static void examine();
    bool isAnotherTapGiven();

    const Block told_;
    NSTimer* const looks_;
    double nextAsking_ = 0;
};

}  // namespace vantrel::macos
