// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <dispatch/dispatch.h>
#include <objc/NSObjCRuntime.h>
#include <os/availability.h>

#if defined(__cplusplus)
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif

#define NS_ENUM(...) CF_ENUM(__VA_ARGS__)
#define NS_OPTIONS(type, name) CF_OPTIONS(type, name)
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")

@class NSString;
typedef NSString* NSExceptionName;

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT SEL NSSelectorFromString(NSString* name);

NS_ASSUME_NONNULL_END
