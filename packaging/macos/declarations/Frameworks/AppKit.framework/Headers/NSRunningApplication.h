// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps API_DEPRECATED("It has no effect from macOS 14 on.",
                                                          macos(10.6, 14.0)) = 1 << 1,
};
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};

API_AVAILABLE(macos(10.6))
@interface NSRunningApplication : NSObject
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier
    API_AVAILABLE(macos(10.6));
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid API_AVAILABLE(macos(10.6));
@property(class, readonly, strong) NSRunningApplication* currentApplication API_AVAILABLE(macos(10.6));
@property(readonly, getter=isActive) BOOL active;
@property(readonly, getter=isTerminated) BOOL terminated;
@property(readonly) pid_t processIdentifier;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSURL* executableURL;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options API_AVAILABLE(macos(10.6));
- (BOOL)activateFromApplication:(NSRunningApplication*)application
                        options:(NSApplicationActivationOptions)options API_AVAILABLE(macos(14.0));
- (BOOL)terminate API_AVAILABLE(macos(10.6));
- (BOOL)forceTerminate API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
