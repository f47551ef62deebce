#include "platform/macos/BlackoutContentView.h"

@implementation BlackoutContentView

- (void)resetCursorRects {
    [super resetCursorRects];
    [self addCursorRect:self.bounds cursor:NSCursor.operationNotAllowedCursor];
}

@end
