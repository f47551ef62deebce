#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "platform/ui/Overlay.h"

/// Lies on top of a cover and takes its clicks. A click on the window itself would bring the client to the front and
/// take the keyboard from the browser, although the window never becomes key.
@interface BlackoutClickView : NSView
@end

/// Shows the operation-not-allowed cursor everywhere.
@interface BlackoutContentView : NSView
@end

/// Never key and never main, so that the keyboard stays with the browser.
@interface BlackoutWindow : NSWindow

/// Creates the black content view with these labels. Call it once, for a window of this size.
- (void)setUpContentWithSize:(NSSize)size labels:(const std::vector<vantrel::OverlayLabel>&)labels;

@end
