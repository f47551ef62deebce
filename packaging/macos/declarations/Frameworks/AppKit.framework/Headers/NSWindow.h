// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSGraphics.h>
#import <AppKit/NSResponder.h>

@class NSColor, NSView;

NS_ASSUME_NONNULL_BEGIN

typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSModalPanelWindowLevel = 8;

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskResizable = 1 << 3,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};
typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenPrimary = 1 << 7,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
    NSWindowCollectionBehaviorCanJoinAllApplications API_AVAILABLE(macos(13.0)) = 1 << 18,
};
typedef NS_OPTIONS(NSUInteger, NSWindowOcclusionState) {
    NSWindowOcclusionStateVisible = 1 << 1,
};

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer NS_DESIGNATED_INITIALIZER;
@property(copy) NSString* title;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(nullable, strong) __kindof NSView* contentView;
@property(nullable, weak) NSView* initialFirstResponder;
@property NSWindowStyleMask styleMask;
@property NSWindowLevel level;
@property(null_resettable, copy) NSColor* backgroundColor;
@property(getter=isOpaque) BOOL opaque;
@property BOOL hasShadow;
@property NSWindowCollectionBehavior collectionBehavior;
@property BOOL hidesOnDeactivate;
@property BOOL canHide;
@property(getter=isVisible, readonly) BOOL visible;
@property(readonly) NSWindowOcclusionState occlusionState API_AVAILABLE(macos(10.9));
@property(getter=isMovable) BOOL movable API_AVAILABLE(macos(10.6));
@property BOOL ignoresMouseEvents;
@property(readonly) BOOL canBecomeKeyWindow;
@property(readonly) BOOL canBecomeMainWindow;
- (void)center;
- (void)close;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderOut:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)setFrame:(NSRect)frame display:(BOOL)display;
@end

NS_ASSUME_NONNULL_END
