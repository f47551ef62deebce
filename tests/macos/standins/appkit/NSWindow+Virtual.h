#pragma once

#import <AppKit/NSWindow.h>

#include "platform/ui/Window.h"

@interface NSWindow (VantrelVirtual)

/// The windows that are not closed, oldest first.
+ (NSArray<NSWindow*>*)vantrel_all;
/// The window on the virtual Mac, created if necessary. Null for one without a border or a closed one.
- (nullable vantrel::Window*)vantrel_virtualWindow;
/// In points from the bottom left of the primary display.
- (vantrel::Rect)vantrel_frame;

@end
