// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSWindow.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWindow (NSScripting)
- (void)setIsVisible:(BOOL)flag;
@end

NS_ASSUME_NONNULL_END
