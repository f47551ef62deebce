// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSButtonCell.h>
#import <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSButton : NSControl
+ (instancetype)buttonWithTitle:(NSString*)title
                         target:(nullable id)target
                         action:(nullable SEL)action API_AVAILABLE(macos(10.12));
@property(copy) NSString* title;
@property NSBezelStyle bezelStyle;
@property(copy) NSString* keyEquivalent;
@end

NS_ASSUME_NONNULL_END
