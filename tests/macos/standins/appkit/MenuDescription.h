#pragma once

#import <AppKit/NSMenu.h>

#include "platform/ui/Menu.h"

namespace vantrel::standins {

/// The menu as the virtual Mac shows it. An item is enabled as AppKit's automatic enabling has it: with a submenu, or
/// with an action that its target answers. Whether somebody in the responder chain answers the action of an item
/// without a target is not looked at: it counts as answered. Choosing an item sends its action to its target.
Menu descriptionOf(NSMenu* _Nullable menu);

}  // namespace vantrel::standins
