// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSApplication.h>

@class NSWindow;

NS_ASSUME_NONNULL_BEGIN

@interface NSApplication (NSScripting)
@property(readonly, copy) NSArray<NSWindow*>* orderedWindows;
@end

NS_ASSUME_NONNULL_END
