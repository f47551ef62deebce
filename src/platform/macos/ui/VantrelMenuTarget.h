#pragma once

#import <AppKit/AppKit.h>

#include "platform/threads/Block.h"

/// The target of a menu item that acts through a block. Main thread.
@interface VantrelMenuTarget : NSObject

- (instancetype)initWithBlock:(vantrel::Block)block;
- (void)perform:(id)sender;

@end
