// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSControl.h>

@class NSColor;

NS_ASSUME_NONNULL_BEGIN

@interface NSTextField : NSControl
@property(nullable, copy) NSString* placeholderString API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSColor* backgroundColor;
@property BOOL drawsBackground;
@property(nullable, copy) NSColor* textColor;
@property(getter=isBordered) BOOL bordered;
@property(getter=isEditable) BOOL editable;
@property(getter=isSelectable) BOOL selectable;
+ (instancetype)labelWithString:(NSString*)text API_AVAILABLE(macos(10.12));
+ (instancetype)wrappingLabelWithString:(NSString*)text API_AVAILABLE(macos(10.12));
@end

NS_ASSUME_NONNULL_END
