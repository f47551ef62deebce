// The root class and the classes of blocks. Compiled without automatic reference counting, which is built on them.
#import <Foundation/Foundation.h>

#include "tests/macos/standins/runtime/Classes.h"

extern "C" {
id vantrel_allocate(Class cls);
void vantrel_deallocate(id object);
id vantrel_retain(id object);
void vantrel_release(id object);
void vantrel_retain_block(id block);
id objc_autorelease(id object);
BOOL objc_opt_isKindOfClass(id object, Class wanted);
BOOL objc_opt_respondsToSelector(id object, SEL selector);
Class object_getClass(id object);
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}

@implementation NSObject

+ (id)alloc {
    return vantrel_allocate(self);
}

+ (id)new {
    return [[self alloc] init];
}

+ (Class)class {
    return self;
}

- (id)init {
    return self;
}

- (void)dealloc {
    vantrel_deallocate(self);
}

- (Class)class {
    return object_getClass(self);
}

- (id)self {
    return self;
}

- (id)retain {
    return vantrel_retain(self);
}

- (oneway void)release {
    vantrel_release(self);
}

- (id)autorelease {
    return objc_autorelease(self);
}

// Classes are not reference-counted.
+ (id)retain {
    return self;
}

+ (oneway void)release {
}

+ (id)autorelease {
    return self;
}

- (BOOL)isKindOfClass:(Class)wanted {
    return objc_opt_isKindOfClass(self, wanted);
}

- (BOOL)respondsToSelector:(SEL)selector {
    return objc_opt_respondsToSelector(self, selector);
}

- (BOOL)isEqual:(id)object {
    return self == object;
}

- (NSUInteger)hash {
    return reinterpret_cast<NSUInteger>(self);
}

- (id)copy {
    return [(id<NSCopying>)self copyWithZone:nullptr];
}

- (id)mutableCopy {
    return [(id<NSMutableCopying>)self mutableCopyWithZone:nullptr];
}

@end

/// A block of any kind.
@interface VantrelBlock : NSObject
@end

@implementation VantrelBlock

- (id)retain {
    vantrel_retain_block(self);
    return self;
}

- (oneway void)release {
    _Block_release(self);
}

- (id)copy {
    return static_cast<id>(_Block_copy(self));
}

@end

@interface __NSStackBlock__ : VantrelBlock
@end
@implementation __NSStackBlock__
@end

@interface __NSMallocBlock__ : VantrelBlock
@end
@implementation __NSMallocBlock__
@end

@interface __NSGlobalBlock__ : VantrelBlock
@end
@implementation __NSGlobalBlock__
@end

// The compiler's names for two of them.
__asm__(".globl _NSConcreteStackBlock\n.set _NSConcreteStackBlock, OBJC_CLASS_$___NSStackBlock__");
__asm__(".globl _NSConcreteGlobalBlock\n.set _NSConcreteGlobalBlock, OBJC_CLASS_$___NSGlobalBlock__");

extern "C" {

CFTypeRef CFRetain(CFTypeRef reference) {
    if (reference == nullptr) vantrel::standins::fatal("CFRetain of null");
    return [(id)reference retain];
}

void CFRelease(CFTypeRef reference) {
    if (reference == nullptr) vantrel::standins::fatal("CFRelease of null");
    [(id)reference release];
}

}  // extern "C"
