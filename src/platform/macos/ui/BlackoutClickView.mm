#include "platform/macos/ui/BlackoutClickView.h"

@implementation BlackoutClickView

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;
}

// The system then waits with the activation until the mouse is up, and leaves it out when it was prevented by then.
- (BOOL)shouldDelayWindowOrderingForEvent:(NSEvent*)event {
    (void)event;
    return YES;
}

- (void)mouseDown:(NSEvent*)event {
    (void)event;
    [NSApplication.sharedApplication preventWindowOrdering];
}

@end
