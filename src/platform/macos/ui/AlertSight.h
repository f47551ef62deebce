#pragma once

#import <AppKit/AppKit.h>

#include "platform/threads/Block.h"

namespace vantrel::macos {

/// Sees to it that somebody sees an alert of a client without a window, and ends an alert that nobody can see: it
/// would hold up everything else. Created before the alert runs and destroyed after it. Main thread.
class AlertSight {
  public:
    /// `lastButton` is its index. `onLook` runs every second.
    AlertSight(NSAlert* _Nonnull alert, NSInteger lastButton, Block onLook);
    ~AlertSight();
    AlertSight(const AlertSight&) = delete;
    AlertSight& operator=(const AlertSight&) = delete;

  private:
    void look();
    void giveUp();

    NSAlert* _Nonnull const alert_;
    const NSInteger lastButton_;
    const Block onLook_;
    NSTimer* _Nonnull const looks_;
    int unseen_ = 0;
};

}  // namespace vantrel::macos
