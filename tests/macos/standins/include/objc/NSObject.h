#pragma once

#include <objc/NSObjCRuntime.h>

#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))

@class NSString;

#pragma clang assume_nonnull begin

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property(readonly) NSUInteger hash;
- (Class)class;
- (instancetype)self;
- (BOOL)isKindOfClass:(Class)wanted;
- (BOOL)respondsToSelector:(SEL)selector;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa;
}
+ (instancetype)alloc;
+ (instancetype)new;
+ (Class)class;
- (instancetype)init;
- (void)dealloc;
- (id)copy;
- (id)mutableCopy;
@end

#pragma clang assume_nonnull end
