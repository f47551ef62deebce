#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "platform/ui/Overlay.h"

/// Never key and never main, so that the keyboard stays with the browser.
@interface BlackoutWindow : NSWindow

/// Makes the black content view with these labels. Once, for a window of this size.
- (void)setUpContentWithSize:(NSSize)size labels:(const std::vector<vantrel::OverlayLabel>&)labels;

@end
