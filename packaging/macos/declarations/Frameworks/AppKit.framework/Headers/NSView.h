// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSAccessibilityProtocols.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSUserInterfaceItemIdentification.h>

@class CALayer, NSCursor, NSEvent;

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
    NSViewNotSizable = 0,
    NSViewMinXMargin = 1,
    NSViewWidthSizable = 2,
    NSViewMaxXMargin = 4,
    NSViewMinYMargin = 8,
    NSViewHeightSizable = 16,
    NSViewMaxYMargin = 32,
};

@interface NSView : NSResponder <NSAccessibility, NSUserInterfaceItemIdentification>
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (void)addSubview:(NSView*)view;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property NSRect frame;
@property NSRect bounds;
@property NSAutoresizingMaskOptions autoresizingMask;
@property(getter=isHidden) BOOL hidden;
@property(readonly, getter=isHiddenOrHasHiddenAncestor) BOOL hiddenOrHasHiddenAncestor;
@property(nullable, assign) NSView* nextKeyView;
@property BOOL wantsLayer API_AVAILABLE(macos(10.5));
@property(nullable, strong) CALayer* layer API_AVAILABLE(macos(10.5));
- (void)setFrameOrigin:(NSPoint)origin;
- (nullable NSView*)hitTest:(NSPoint)point;
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event;
- (BOOL)shouldDelayWindowOrderingForEvent:(NSEvent*)event;
- (void)resetCursorRects;
- (void)addCursorRect:(NSRect)rect cursor:(NSCursor*)cursor;
@end

NS_ASSUME_NONNULL_END
