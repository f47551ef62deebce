#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "platform/ui/Overlay.h"

/// Lies on top of a cover and takes its clicks. One that came to the window itself would bring the client to the front
/// and take the keyboard away from the browser, although the window never becomes key.
@interface BlackoutClickView : NSView
@end

/// Shows the operation-not-allowed cursor all over.
@interface BlackoutContentView : NSView
@end

/// Never key and never main, so that the keyboard stays with the browser.
@interface BlackoutWindow : NSWindow

/// Makes the black content view with these labels. Once, for a window of this size.
- (void)setUpContentWithSize:(NSSize)size labels:(const std::vector<vantrel::OverlayLabel>&)labels;

@end
