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
static inline __attribute__((cf_returns_retained)) CFTypeRef _Nullable CFBridgingRetain(id _Nullable object) {
    return (__bridge_retained CFTypeRef)object;
}

NS_ASSUME_NONNULL_END
