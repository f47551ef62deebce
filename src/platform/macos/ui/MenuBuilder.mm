#include "platform/macos/ui/MenuBuilder.h"

#include <utility>

#include "platform/macos/bridge/Text.h"

@implementation VantrelMenuTarget {
    vantrel::Block _block;
}

- (instancetype)initWithBlock:(vantrel::Block)block {
    self = [super init];
    if (self != nil) _block = std::move(block);
    return self;
}

// The system may send the action inside a block of the main queue. A question that it opened there would hold up all
// other blocks of the queue, so it comes from the run loop: even under an alert, and not once its menu is gone.
- (void)perform:(id)sender {
    (void)sender;
    __weak VantrelMenuTarget* weak = self;
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      @autoreleasepool {
          [weak act];
      }
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

- (void)act {
    // A copy: the block may destroy its own menu.
    const vantrel::Block block = _block;
    block();
}

@end

namespace vantrel::macos {

namespace {

NSMenuItem* actionItem(const MenuItem& item) {
    NSMenuItem* made = [[NSMenuItem alloc] initWithTitle:lenientText(item.title)
                                                  action:nil
                                           keyEquivalent:lenientText(item.keyEquivalent)];
    if (!item.enabled) return made;
    if (item.target) {
        VantrelMenuTarget* target = [[VantrelMenuTarget alloc] initWithBlock:item.target];
        made.action = @selector(perform:);
        made.target = target;
        // The item holds its target weakly.
        made.representedObject = target;
    } else if (!item.action.empty()) {
        made.action = NSSelectorFromString(lenientText(item.action));
    }
    return made;
}

NSMenuItem* appKitItem(const MenuItem& item) {
    if (item.kind == MenuItem::Kind::separator) return [NSMenuItem separatorItem];
    NSMenuItem* made = actionItem(item);
    if (item.kind == MenuItem::Kind::submenu) made.submenu = appKitMenu(item.submenu);
    return made;
}

}  // namespace

NSMenu* appKitMenu(const Menu& menu) {
    NSMenu* made = [[NSMenu alloc] initWithTitle:lenientText(menu.title)];
    for (const MenuItem& item : menu.items) [made addItem:appKitItem(item)];
    return made;
}

}  // namespace vantrel::macos
