#pragma once

#import <AppKit/AppKit.h>

#include "platform/ui/Menu.h"

namespace vantrel::macos {

/// AppKit's menu for the client's. Items enable themselves as AppKit has it: one without an action is disabled, one
/// without a target is enabled when somebody answers its action. Main thread.
NSMenu* appKitMenu(const Menu& menu);

}  // namespace vantrel::macos
