// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSString.h>

@class NSTimer;

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSRunLoopMode;

FOUNDATION_EXPORT NSRunLoopMode const NSRunLoopCommonModes API_AVAILABLE(macos(10.5));

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* mainRunLoop API_AVAILABLE(macos(10.5));
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
@end

NS_ASSUME_NONNULL_END
