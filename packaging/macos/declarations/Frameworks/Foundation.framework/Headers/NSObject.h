// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/NSObjCRuntime.h>
#include <objc/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSCopying
- (id)copyWithZone:(nullable struct _NSZone*)zone;
@end

@protocol NSMutableCopying
- (id)mutableCopyWithZone:(nullable struct _NSZone*)zone;
@end

static inline id _Nullable CFBridgingRelease(CFTypeRef __attribute__((cf_consumed)) _Nullable reference) {
    return (__bridge_transfer id)reference;
}

NS_ASSUME_NONNULL_END
