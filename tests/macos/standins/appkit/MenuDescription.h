#pragma once

#import <AppKit/NSMenu.h>

#include "platform/ui/Menu.h"

@interface NSMenu (VantrelStatusBar)
/// The number of the status item that it belongs to, 0 for none.
- (void)vantrel_setStatusItem:(std::uint64_t)number;
@end

namespace vantrel::standins {

/// The menu as the virtual Mac shows it. Items are enabled as AppKit does it: if they have a submenu, or an action that
/// their target handles. The responder chain is not searched: an action without a target counts as handled. Choosing an
/// item sends its action to its target.
Menu descriptionOf(NSMenu* _Nullable menu);

}  // namespace vantrel::standins
