#include "platform/macos/ui/BlackoutContentView.h"

@implementation BlackoutContentView

- (void)resetCursorRects {
    [super resetCursorRects];
    [self addCursorRect:self.bounds cursor:NSCursor.operationNotAllowedCursor];
}

@end
