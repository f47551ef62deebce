#pragma once

#import <AppKit/AppKit.h>

#include "platform/threads/Block.h"
#include "platform/ui/Menu.h"

/// The target of a menu item that acts through a block. Main thread.
@interface VantrelMenuTarget : NSObject

- (instancetype)initWithBlock:(vantrel::Block)block;
- (void)perform:(id)sender;

@end

namespace vantrel::macos {

/// AppKit's menu for the client's. AppKit enables the items: one without an action is disabled, one without a target is
/// enabled if some responder handles its action. Main thread.
NSMenu* appKitMenu(const Menu& menu);

}  // namespace vantrel::macos
