#pragma once

#import <AppKit/AppKit.h>

/// Lies on top of a cover and takes its clicks. One that came to the window itself would bring the client to the front
/// and take the keyboard away from the browser, although the window never becomes key.
@interface BlackoutClickView : NSView
@end
