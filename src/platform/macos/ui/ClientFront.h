#pragma once

#import <AppKit/AppKit.h>

namespace vantrel::macos {

/// Whether the client shows a window that can be the main one. Covers, alerts and status items never are. Main thread.
bool showsAWindow(NSApplication* _Nonnull application);

/// Brings the client to the front. From macOS 14 on, the system may leave an application that is not in front where it
/// is: the client's windows are then seen all the same, and a click on one brings it there. Main thread.
void bringClientToFront(NSApplication* _Nonnull application);

}  // namespace vantrel::macos
