// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSDate.h>
#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSThread : NSObject
@property(class, readonly) BOOL isMainThread API_AVAILABLE(macos(10.5));
+ (void)sleepForTimeInterval:(NSTimeInterval)seconds;
@end

NS_ASSUME_NONNULL_END
