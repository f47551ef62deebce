#pragma once

#import <AppKit/NSWindow.h>

#include "platform/ui/Window.h"

@interface NSWindow (VantrelVirtual)

/// Those that are not closed, oldest first.
+ (NSArray<NSWindow*>*)vantrel_all;
/// The window of the virtual Mac, made if it is not yet; null for one without a border, or when it is closed.
- (nullable vantrel::Window*)vantrel_virtualWindow;

@end
