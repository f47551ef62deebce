// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <sys/types.h>

#define CG_EXTERN CF_EXPORT

#pragma clang assume_nonnull begin

typedef double CGFloat;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;

struct CGSize {
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;

struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;

static inline CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint point = {x, y};
    return point;
}
static inline CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize size = {width, height};
    return size;
}
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect rect = {{x, y}, {width, height}};
    return rect;
}

CG_EXTERN bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef _Nullable dictionary, CGRect* _Nullable rect);

typedef struct __attribute__((objc_bridge(id))) CGColor* CGColorRef;

typedef uint32_t CGWindowID;

typedef CF_OPTIONS(uint32_t, CGWindowListOption) {
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = (1 << 0),
    kCGWindowListExcludeDesktopElements = (1 << 4),
};
#define kCGNullWindowID ((CGWindowID)0)

CG_EXTERN const CFStringRef kCGWindowNumber;
CG_EXTERN const CFStringRef kCGWindowLayer;
CG_EXTERN const CFStringRef kCGWindowBounds;
CG_EXTERN const CFStringRef kCGWindowOwnerPID;
CG_EXTERN const CFStringRef kCGWindowOwnerName;
CG_EXTERN const CFStringRef kCGWindowName;
CG_EXTERN const CFStringRef kCGWindowIsOnscreen;

CG_EXTERN CFArrayRef _Nullable CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow)
    API_AVAILABLE(macos(10.5));

typedef struct __attribute__((objc_bridge_mutable(id))) __CGEvent* CGEventRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;
typedef struct __attribute__((objc_bridge(id))) CGEventSource* CGEventSourceRef;
typedef uint64_t CGEventMask;
typedef uint16_t CGKeyCode;

typedef CF_OPTIONS(uint64_t, CGEventFlags) {
    kCGEventFlagMaskAlphaShift = 0x00010000,
    kCGEventFlagMaskShift = 0x00020000,
    kCGEventFlagMaskControl = 0x00040000,
    kCGEventFlagMaskAlternate = 0x00080000,
    kCGEventFlagMaskCommand = 0x00100000,
    kCGEventFlagMaskSecondaryFn = 0x00800000,
};

typedef CF_ENUM(uint32_t, CGEventType) {
    kCGEventNull = 0,
    kCGEventKeyDown = 10,
    kCGEventKeyUp = 11,
    kCGEventFlagsChanged = 12,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};

typedef CF_ENUM(uint32_t, CGEventField) { kCGKeyboardEventAutorepeat = 8, kCGKeyboardEventKeycode = 9 };

typedef CF_ENUM(uint32_t, CGEventTapLocation) {
    kCGHIDEventTap = 0,
    kCGSessionEventTap = 1,
    kCGAnnotatedSessionEventTap = 2,
};
typedef CF_ENUM(uint32_t, CGEventTapPlacement) { kCGHeadInsertEventTap = 0, kCGTailAppendEventTap = 1 };
typedef CF_ENUM(uint32_t, CGEventTapOptions) { kCGEventTapOptionDefault = 0, kCGEventTapOptionListenOnly = 1 };

typedef CGEventRef _Nullable (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                                   void* _Nullable userInfo);

#define CGEventMaskBit(eventType) ((CGEventMask)1 << (eventType))

CG_EXTERN CFMachPortRef _Nullable CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place,
                                                   CGEventTapOptions options, CGEventMask eventsOfInterest,
                                                   CGEventTapCallBack callback, void* _Nullable userInfo);
CG_EXTERN void CGEventTapEnable(CFMachPortRef tap, bool enable);

typedef struct __CGEventTapInformation {
    uint32_t eventTapID;
    CGEventTapLocation tapPoint;
    CGEventTapOptions options;
    CGEventMask eventsOfInterest;
    pid_t tappingProcess;
    pid_t processBeingTapped;
    bool enabled;
    float minUsecLatency;
    float avgUsecLatency;
    float maxUsecLatency;
} CGEventTapInformation;

// CGError. Only success, 0, is ever checked.
typedef CF_ENUM(int32_t, CGError) { kCGErrorSuccess = 0 };
CG_EXTERN CGError CGGetEventTapList(uint32_t maxNumberOfTaps, CGEventTapInformation* _Nullable tapList,
                                    uint32_t* _Nullable eventTapCount) API_AVAILABLE(macos(10.4));

CG_EXTERN int64_t CGEventGetIntegerValueField(CGEventRef _Nullable event, CGEventField field);
CG_EXTERN CGEventFlags CGEventGetFlags(CGEventRef _Nullable event);

CG_EXTERN CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode virtualKey,
                                                          bool keyDown);
CG_EXTERN void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
CG_EXTERN void CGEventPost(CGEventTapLocation tap, CGEventRef _Nullable event);

CG_EXTERN bool CGPreflightScreenCaptureAccess(void) API_AVAILABLE(macos(10.15));
CG_EXTERN bool CGRequestScreenCaptureAccess(void) API_AVAILABLE(macos(10.15));

#pragma clang assume_nonnull end
