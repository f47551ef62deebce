// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSResponder.h>
#import <AppKit/NSRunningApplication.h>

@class NSEvent, NSMenu, NSWindow;

NS_ASSUME_NONNULL_BEGIN

typedef NSInteger NSModalResponse;

typedef NS_ENUM(NSUInteger, NSApplicationTerminateReply) {
    NSTerminateCancel = 0,
    NSTerminateNow = 1,
    NSTerminateLater = 2,
};

FOUNDATION_EXPORT NSNotificationName NSApplicationDidChangeScreenParametersNotification;

@class NSApplication;

@protocol NSApplicationDelegate <NSObject>
@optional
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender;
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationDidBecomeActive:(NSNotification*)notification;
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)urls API_AVAILABLE(macos(10.13));
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, strong) NSMenu* mainMenu;
@property(nullable, readonly, weak) NSWindow* modalWindow;
@property(getter=isActive, readonly) BOOL active;
@property(getter=isHidden, readonly) BOOL hidden;
@property(readonly, copy) NSArray<NSWindow*>* windows;
- (void)unhide:(nullable id)sender;
- (void)unhideWithoutActivation;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy API_AVAILABLE(macos(10.6));
- (void)activate API_AVAILABLE(macos(14.0));
- (void)yieldActivationToApplicationWithBundleIdentifier:(NSString*)bundleIdentifier API_AVAILABLE(macos(14.0));
- (void)activateIgnoringOtherApps:(BOOL)ignore API_DEPRECATED("Use -activate.", macos(10.0, 27.0));
- (void)run;
- (void)preventWindowOrdering;
- (void)stopModalWithCode:(NSModalResponse)returnCode;
- (void)sendEvent:(NSEvent*)event;
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart;
- (void)terminate:(nullable id)sender;
@end

FOUNDATION_EXPORT __kindof NSApplication* _Null_unspecified NSApp;

NS_ASSUME_NONNULL_END
