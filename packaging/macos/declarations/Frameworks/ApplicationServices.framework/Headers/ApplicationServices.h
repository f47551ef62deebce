// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <sys/types.h>

#pragma clang assume_nonnull begin

typedef const struct __attribute__((objc_bridge(id))) __AXUIElement* AXUIElementRef;
typedef const struct __attribute__((objc_bridge(id))) __AXValue* AXValueRef;

typedef CF_ENUM(SInt32, AXError) {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorActionUnsupported = -25206,
    kAXErrorNotImplemented = -25208,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
};

typedef CF_ENUM(UInt32, AXValueType) {
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeCFRange = 4,
    kAXValueTypeAXError = 5,
    kAXValueTypeIllegal = 0,
};

CF_EXPORT CFStringRef kAXTrustedCheckOptionPrompt API_AVAILABLE(macos(10.9));

CF_EXPORT Boolean AXIsProcessTrusted(void);
CF_EXPORT Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options) API_AVAILABLE(macos(10.9));

CF_EXPORT CFTypeID AXUIElementGetTypeID(void);
CF_EXPORT AXUIElementRef AXUIElementCreateApplication(pid_t pid) CF_RETURNS_RETAINED;
CF_EXPORT AXUIElementRef AXUIElementCreateSystemWide(void) CF_RETURNS_RETAINED API_AVAILABLE(macos(10.2));
CF_EXPORT AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) API_AVAILABLE(macos(10.4));
CF_EXPORT AXError AXUIElementGetPid(AXUIElementRef element, pid_t* pid);
CF_EXPORT AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                                CFTypeRef _Nullable* _Nonnull CF_RETURNS_RETAINED value);
CF_EXPORT AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value);
CF_EXPORT AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);

CF_EXPORT CFTypeID AXValueGetTypeID(void);
CF_EXPORT AXValueRef _Nullable AXValueCreate(AXValueType type, const void* value) CF_RETURNS_RETAINED;
CF_EXPORT AXValueType AXValueGetType(AXValueRef value);
CF_EXPORT Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);

#pragma clang assume_nonnull end
