// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColor : NSObject <NSCopying>
+ (NSColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha API_AVAILABLE(macos(10.9));
@property(class, strong, readonly) NSColor* blackColor;
@property(class, strong, readonly) NSColor* clearColor;
@property(class, strong, readonly) NSColor* secondaryLabelColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* tertiaryLabelColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* systemRedColor API_AVAILABLE(macos(10.10));
@property(readonly) CGColorRef CGColor NS_RETURNS_INNER_POINTER API_AVAILABLE(macos(10.8));
@end

NS_ASSUME_NONNULL_END
