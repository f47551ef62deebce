// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#include <Availability.h>
#include <MacTypes.h>
#include <os/availability.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#if defined(__cplusplus)
#define CF_EXPORT extern "C"
#else
#define CF_EXPORT extern
#endif
// The analyzer knows which functions create a CF or CG type. For other types it must be told.
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))

// CF_ENUM(type, name) or, for constants of an existing type, CF_ENUM(type). Both kinds are open: a value may have no
// enumerator. Only an option set accepts combinations.
#define CF_OPEN_ENUM_ATTRIBUTES __attribute__((enum_extensibility(open)))
#define CF_OPTIONS_ATTRIBUTES __attribute__((flag_enum, enum_extensibility(open)))
#define CF_NAMED_ENUM(type, name)                  \
    enum CF_OPEN_ENUM_ATTRIBUTES name : type name; \
    enum name : type
#define CF_UNNAMED_ENUM(type) enum CF_OPEN_ENUM_ATTRIBUTES : type
#define CF_ENUM_OF(first, second, chosen, ...) chosen
#define CF_ENUM(...) CF_ENUM_OF(__VA_ARGS__, CF_NAMED_ENUM, CF_UNNAMED_ENUM, )(__VA_ARGS__)
#if defined(__cplusplus)
#define CF_OPTIONS(type, name) \
    type name;                 \
    enum CF_OPTIONS_ATTRIBUTES : name
#else
#define CF_OPTIONS(type, name)                   \
    enum CF_OPTIONS_ATTRIBUTES name : type name; \
    enum name : type
#endif

#pragma clang assume_nonnull begin

typedef const void __attribute__((objc_bridge(id))) * CFTypeRef;
typedef long CFIndex;
typedef unsigned long CFTypeID;

typedef const struct __attribute__((objc_bridge(id))) __CFAllocator* CFAllocatorRef;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString* CFStringRef;
typedef const struct __attribute__((objc_bridge(NSArray))) __CFArray* CFArrayRef;
typedef const struct __attribute__((objc_bridge(NSDictionary))) __CFDictionary* CFDictionaryRef;
// Bridged to a system class that no header declares: a cast to id compiles, one to NSNumber does not.
typedef const struct __attribute__((objc_bridge(__NSCFBoolean))) __CFBoolean* CFBooleanRef;
typedef struct __attribute__((objc_bridge_mutable(id))) __CFRunLoop* CFRunLoopRef;
typedef struct __attribute__((objc_bridge_mutable(id))) __CFRunLoopSource* CFRunLoopSourceRef;
typedef struct __attribute__((objc_bridge_mutable(NSMachPort))) __CFMachPort* CFMachPortRef;
typedef CFStringRef CFRunLoopMode;

CF_EXPORT const CFAllocatorRef _Null_unspecified kCFAllocatorDefault;
CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;
CF_EXPORT const CFRunLoopMode kCFRunLoopCommonModes;

CF_EXPORT CFTypeRef CFRetain(CFTypeRef cf);
CF_EXPORT void CFRelease(CFTypeRef cf);
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef cf);

CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);

CF_EXPORT CFTypeID CFArrayGetTypeID(void);
CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef array);
CF_EXPORT const void* _Null_unspecified CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

CF_EXPORT CFRunLoopRef _Null_unspecified CFRunLoopGetMain(void);
CF_EXPORT void CFRunLoopAddSource(CFRunLoopRef _Null_unspecified loop, CFRunLoopSourceRef _Null_unspecified source,
                                  CFRunLoopMode _Null_unspecified mode);
CF_EXPORT void CFRunLoopRemoveSource(CFRunLoopRef _Null_unspecified loop, CFRunLoopSourceRef _Null_unspecified source,
                                     CFRunLoopMode _Null_unspecified mode);

CF_EXPORT void CFRunLoopPerformBlock(CFRunLoopRef _Null_unspecified loop, CFTypeRef _Null_unspecified mode,
                                     void (^_Null_unspecified block)(void)) API_AVAILABLE(macos(10.6));
CF_EXPORT void CFRunLoopWakeUp(CFRunLoopRef _Null_unspecified loop);

CF_EXPORT CFRunLoopSourceRef _Null_unspecified CFMachPortCreateRunLoopSource(CFAllocatorRef _Null_unspecified allocator,
                                                                             CFMachPortRef _Null_unspecified port,
                                                                             CFIndex order);
CF_EXPORT void CFMachPortInvalidate(CFMachPortRef _Null_unspecified port);

#pragma clang assume_nonnull end
