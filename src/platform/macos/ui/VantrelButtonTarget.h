#pragma once

#import <AppKit/AppKit.h>

#include "platform/ui/Window.h"

/// The target of a window's buttons; it tells the handler which one was pressed. Main thread.
@interface VantrelButtonTarget : NSObject

- (instancetype)initWithHandler:(vantrel::Windows::ActionHandler)handler;
- (void)buttonPressed:(NSView*)sender;
/// Nothing is told any more.
- (void)forget;

@end
