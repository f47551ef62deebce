#pragma once

#import <AppKit/NSApplication.h>

@interface NSApplication (VantrelOrdering)
/// Whether preventWindowOrdering has been called since the last question.
- (bool)vantrel_wasOrderingPrevented;
@end

@interface NSApplication (VantrelModal)
/// Returns the one before.
- (nullable NSWindow*)vantrel_setModalWindow:(nullable NSWindow*)window;
@end

/// A window whose modal session can be ended.
@protocol VantrelModalWindow
- (void)vantrel_endWith:(NSModalResponse)response;
@end

namespace vantrel::standins {

/// Destroys the application object with its Mac. The next sharedApplication creates a new one.
void forgetOwnApplication();

}  // namespace vantrel::standins
