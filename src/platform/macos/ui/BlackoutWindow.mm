#include "platform/macos/ui/BlackoutWindow.h"

#import <QuartzCore/CALayer.h>

#include "platform/macos/bridge/Text.h"

@implementation BlackoutClickView

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;
}

// The system then delays the activation until the mouse button is released, and skips it if it has been prevented by
// then.
- (BOOL)shouldDelayWindowOrderingForEvent:(NSEvent*)event {
    (void)event;
    return YES;
}

- (void)mouseDown:(NSEvent*)event {
    (void)event;
    [NSApplication.sharedApplication preventWindowOrdering];
}

// Also the click with the Control key. Not passed on: the default opens a menu.
- (void)rightMouseDown:(NSEvent*)event {
    [self mouseDown:event];
}

- (void)otherMouseDown:(NSEvent*)event {
    [self mouseDown:event];
}

@end

@implementation BlackoutContentView

- (void)resetCursorRects {
    [super resetCursorRects];
    [self addCursorRect:self.bounds cursor:NSCursor.operationNotAllowedCursor];
}

@end

namespace {

NSTextField* textField(const vantrel::OverlayLabel& label) {
    NSString* text = vantrel::macos::lenientText(label.text);
    const bool wraps = label.fixedSize != vantrel::Size();
    NSTextField* field = wraps ? [NSTextField wrappingLabelWithString:text] : [NSTextField labelWithString:text];
    field.editable = NO;
    field.selectable = NO;
    field.bordered = NO;
    field.drawsBackground = NO;
    field.backgroundColor = NSColor.clearColor;
    field.alignment = NSTextAlignmentCenter;
    field.font = label.bold ? [NSFont boldSystemFontOfSize:label.fontSize] : [NSFont systemFontOfSize:label.fontSize];
    field.textColor = [NSColor colorWithWhite:label.whiteLevel alpha:1.0];
    if (wraps) {
        const vantrel::Size& size = label.fixedSize;
        field.frame = NSMakeRect(label.centreX - size.width * 0.5, label.y, size.width, size.height);
    } else {
        [field sizeToFit];
        [field setFrameOrigin:NSMakePoint(label.centreX - field.frame.size.width * 0.5, label.y)];
    }
    return field;
}

}  // namespace

@implementation BlackoutWindow

- (BOOL)canBecomeKeyWindow {
    return NO;
}

- (BOOL)canBecomeMainWindow {
    return NO;
}

- (void)setUpContentWithSize:(NSSize)size labels:(const std::vector<vantrel::OverlayLabel>&)labels {
    BlackoutContentView* view = [[BlackoutContentView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    view.wantsLayer = YES;
    view.layer.backgroundColor = NSColor.blackColor.CGColor;
    for (const vantrel::OverlayLabel& label : labels) [view addSubview:textField(label)];
    NSView* clicks = [[BlackoutClickView alloc] initWithFrame:view.bounds];
    clicks.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [view addSubview:clicks];
    self.contentView = view;
}

@end
