#import <AppKit/AppKit.h>
#import <QuartzCore/CALayer.h>

#include <vector>

#include "tests/macos/standins/appkit/NSView+Virtual.h"
#include "tests/macos/standins/appkit/NSWindow+Virtual.h"
#include "tests/macos/standins/corefoundation/Rects.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@implementation NSView {
    __weak NSWindow* _window;
    __weak NSView* _superview;
    std::vector<NSView*> _subviews;
    NSRect _frame;
    BOOL _hidden;
}

@synthesize identifier = _identifier, bounds = _bounds, accessibilityLabel = _accessibilityLabel;

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super init];
    if (self != nil) self.frame = frame;
    return self;
}

- (instancetype)init {
    return [self initWithFrame:NSMakeRect(0, 0, 0, 0)];
}

- (NSRect)frame {
    return _frame;
}

- (void)setFrame:(NSRect)frame {
    _frame = frame;
    _bounds.size = frame.size;
}

- (void)setFrameOrigin:(NSPoint)origin {
    _frame.origin = origin;
}

- (void)addSubview:(NSView*)view {
    if (view == nil) raise(@"NSInvalidArgumentException", @"addSubview: nil");
    _subviews.push_back(view);
    view->_superview = self;
    [view vantrel_moveToWindow:_window];
}

- (NSArray*)subviews {
    NSMutableArray* views = [NSMutableArray arrayWithCapacity:_subviews.size()];
    for (NSView* view : _subviews) [views addObject:view];
    return views;
}

- (void)setSubviews:(NSArray*)subviews {
    for (NSView* view : _subviews) {
        view->_superview = nil;
        [view vantrel_moveToWindow:nil];
    }
    _subviews.clear();
    for (NSView* view in subviews) [self addSubview:view];
}

- (BOOL)isHidden {
    return _hidden;
}

- (void)setHidden:(BOOL)hidden {
    auto* const window = [self vantrel_virtualWindow];
    _hidden = hidden;
    if (window != nullptr) window->setViewHidden([self vantrel_id], hidden);
}

- (BOOL)isHiddenOrHasHiddenAncestor {
    return _hidden || [_superview isHiddenOrHasHiddenAncestor];
}

- (BOOL)wantsLayer {
    return self.layer != nil;
}

- (void)setWantsLayer:(BOOL)wants {
    if (wants && self.layer == nil) self.layer = [[CALayer alloc] init];
}

- (NSView*)hitTest:(NSPoint)point {
    const bool isInside = point.x >= _frame.origin.x && point.x < _frame.origin.x + _frame.size.width &&
                          point.y >= _frame.origin.y && point.y < _frame.origin.y + _frame.size.height;
    if (_hidden || !isInside) return nil;
    const NSPoint within = NSMakePoint(point.x - _frame.origin.x, point.y - _frame.origin.y);
    // The last one is on top.
    for (auto view = _subviews.rbegin(); view != _subviews.rend(); ++view) {
        if (NSView* hit = [*view hitTest:within]) return hit;
    }
    return self;
}

// No page says that what is hidden is left out.
- (BOOL)performKeyEquivalent:(NSEvent*)event {
    for (NSView* view : _subviews) {
        if ([view performKeyEquivalent:event]) return YES;
    }
    return NO;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return NO;
}

- (BOOL)shouldDelayWindowOrderingForEvent:(NSEvent*)event {
    (void)event;
    return NO;
}

- (void)resetCursorRects {
}

- (void)addCursorRect:(NSRect)rect cursor:(NSCursor*)cursor {
    (void)rect;
    if (cursor == nil) raise(@"NSInvalidArgumentException", @"a rectangle without a cursor");
}

- (void)vantrel_moveToWindow:(NSWindow*)window {
    _window = window;
    for (NSView* view : _subviews) [view vantrel_moveToWindow:window];
}

- (vantrel::Window*)vantrel_virtualWindow {
    return [_window vantrel_virtualWindow];
}

- (std::string)vantrel_id {
    return bytesOf(_identifier);
}

- (vantrel::View)vantrel_viewDescription {
    vantrel::View view;
    view.id = [self vantrel_id];
    view.frame = rectOf(_frame);
    view.autoresizingMask = static_cast<unsigned>(self.autoresizingMask);
    view.hidden = _hidden;
    for (NSView* child : _subviews) {
        if (auto control = [child vantrel_controlDescription]) view.controls.push_back(std::move(*control));
    }
    return view;
}

- (std::optional<vantrel::Control>)vantrel_controlDescription {
    return std::nullopt;
}

- (NSView*)vantrel_named:(const std::string&)identifier {
    if ([self vantrel_id] == identifier) return self;
    for (NSView* view : _subviews) {
        if (NSView* found = [view vantrel_named:identifier]) return found;
    }
    return nil;
}

- (void)vantrel_tellState {
    for (NSView* view : _subviews) [view vantrel_tellState];
}

@end

@implementation NSBox

- (std::optional<vantrel::Control>)vantrel_controlDescription {
    if (self.boxType != NSBoxSeparator) return std::nullopt;
    vantrel::Control control;
    control.kind = vantrel::Control::Kind::separator;
    control.id = [self vantrel_id];
    control.frame = rectOf(self.frame);
    return control;
}

@end
