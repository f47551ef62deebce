// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(10.5))
@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue API_AVAILABLE(macos(10.6));
@property(nullable, copy) NSString* name API_AVAILABLE(macos(10.6));
- (void)addOperationWithBlock:(void (^)(void))block API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
