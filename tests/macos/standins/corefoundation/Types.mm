#include "tests/macos/standins/corefoundation/Types.h"

#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

@interface __NSCFBoolean : NSNumber
@end

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;

CFTypeID CFGetTypeID(CFTypeRef reference) {
    if (reference == nullptr) fatal("CFGetTypeID of null");
    id object = (__bridge id)reference;
    if ([object isKindOfClass:[__NSCFBoolean class]]) return typeOfBooleans;
    if ([object isKindOfClass:[NSNumber class]]) return typeOfNumbers;
    if ([object isKindOfClass:[NSString class]]) return typeOfStrings;
    if ([object isKindOfClass:[NSArray class]]) return typeOfArrays;
    if ([object isKindOfClass:[NSDictionary class]]) return typeOfDictionaries;
    if ([object respondsToSelector:@selector(vantrel_type)]) return [(id<VantrelTyped>)object vantrel_type];
    return typeOfOthers;
}

CFTypeID CFBooleanGetTypeID() {
    return typeOfBooleans;
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    return [(__bridge NSNumber*)(CFTypeRef)boolean boolValue] ? 1 : 0;
}

CFTypeID CFArrayGetTypeID() {
    return typeOfArrays;
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    return static_cast<CFIndex>([(__bridge NSArray*)array count]);
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return (__bridge const void*)((__bridge NSArray*)array)[static_cast<NSUInteger>(index)];
}

SEL NSSelectorFromString(NSString* name) {
    return (SEL)(const void*)selector(bytesOf(name));
}

}  // extern "C"
