// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

@class NSEvent;

NS_ASSUME_NONNULL_BEGIN

@interface NSResponder : NSObject
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (BOOL)performKeyEquivalent:(NSEvent*)event;
- (void)mouseDown:(NSEvent*)event;
- (void)rightMouseDown:(NSEvent*)event;
- (void)otherMouseDown:(NSEvent*)event;
@end

NS_ASSUME_NONNULL_END
