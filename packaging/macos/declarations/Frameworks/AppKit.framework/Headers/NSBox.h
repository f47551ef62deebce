// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSBoxType) {
    NSBoxPrimary = 0,
    NSBoxSeparator = 2,
    NSBoxCustom = 4,
};

@interface NSBox : NSView
@property NSBoxType boxType;
@end

NS_ASSUME_NONNULL_END
