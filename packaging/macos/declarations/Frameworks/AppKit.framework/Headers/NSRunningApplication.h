// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps = 1 << 1,
};

@interface NSRunningApplication : NSObject
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier
    API_AVAILABLE(macos(10.6));
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid API_AVAILABLE(macos(10.6));
@property(readonly, getter=isTerminated) BOOL terminated;
@property(readonly) pid_t processIdentifier;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSURL* executableURL;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options API_AVAILABLE(macos(10.6));
- (BOOL)terminate API_AVAILABLE(macos(10.6));
- (BOOL)forceTerminate API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
