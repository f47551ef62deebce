// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSText.h>
#import <AppKit/NSView.h>

@class NSCell, NSFont;

NS_ASSUME_NONNULL_BEGIN

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(getter=isEnabled) BOOL enabled;
@property(copy) NSString* stringValue;
@property(nullable, strong) __kindof NSCell* cell;
@property(nullable, strong) NSFont* font;
@property NSTextAlignment alignment;
- (void)sizeToFit;
- (void)performClick:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
