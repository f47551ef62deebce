#pragma once

#import <AppKit/AppKit.h>

#include "platform/ui/Window.h"

namespace vantrel::macos {

/// The AppKit view of a control, with the control's id as identifier. A button sends `action` to `target`, which it
/// holds weakly. Main thread.
NSView* appKitControl(const Control& control, id target, SEL action);

}  // namespace vantrel::macos
