#pragma once

#import <AppKit/AppKit.h>

#include <vector>

namespace vantrel::macos {

/// Tells a screen reader what the labels of a window say that tell how things stand. Main thread.
class StatusAnnouncer {
  public:
    void add(NSControl* _Nonnull label);

    /// Call it after each change. Tells each text that has come on the screen since the last call.
    void update(NSWindow* _Nonnull window);

  private:
    struct Status {
        NSControl* _Nonnull label;
        /// What was on the screen at the last call. Empty for nothing.
        NSString* _Nonnull seen;
    };

    std::vector<Status> statuses_;
};

}  // namespace vantrel::macos
