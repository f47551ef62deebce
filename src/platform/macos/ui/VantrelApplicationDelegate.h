#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/ui/Application.h"

/// The delegate that AppKit knows; it hands on to the client's. Main thread.
@interface VantrelApplicationDelegate : NSObject <NSApplicationDelegate>

- (void)setReceiver:(std::weak_ptr<vantrel::ApplicationDelegate>)receiver;

@end
