#import <AppKit/AppKit.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/NSView+Virtual.h"
#include "tests/macos/standins/appkit/NSWindow+Virtual.h"
#include "tests/macos/standins/appkit/OverlayDescription.h"
#include "tests/macos/standins/corefoundation/Rects.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

namespace {

/// Weak: a window is removed when it is closed or destroyed. Main thread.
std::vector<__unsafe_unretained NSWindow*>& living() {
    static auto* const windows = new std::vector<__unsafe_unretained NSWindow*>;
    return *windows;
}

/// Those on the screen, where a window stays until it is ordered out or closed: no page says that it goes with its last
/// reference. Main thread.
std::vector<NSWindow*>& onScreen() {
    static auto* const windows = new std::vector<NSWindow*>;
    return *windows;
}

void keepOnScreen(NSWindow* window, bool shown) {
    std::erase(onScreen(), window);
    if (shown) onScreen().push_back(window);
}

}  // namespace

/// A window with a border is one of the virtual Mac's windows, one without is one of its overlays. Either is created
/// when the window, or a view in it, is first used; before that its parts are not complete.
@implementation NSWindow {
    NSRect _frame;
    NSWindowStyleMask _styleMask;
    NSWindowLevel _level;
    NSView* _contentView;
    std::unique_ptr<vantrel::Window> _window;
    std::unique_ptr<vantrel::Overlay> _overlay;
    int _number;
    bool _isShownOverlay;
    bool _isClosed;
    NSColor* _backgroundColor;
}

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer {
    (void)backing, (void)defer;
    requireMain("a window");
    self = [super init];
    if (self == nil) return nil;
    _frame = contentRect;
    _styleMask = style;
    self.releasedWhenClosed = YES;
    self.title = @"";
    self.contentView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, contentRect.size.width, contentRect.size.height)];
    living().push_back(self);
    return self;
}

- (instancetype)init {
    return [self initWithContentRect:NSMakeRect(0, 0, 0, 0)
                           styleMask:NSWindowStyleMaskBorderless
                             backing:NSBackingStoreBuffered
                               defer:NO];
}

- (NSColor*)backgroundColor {
    return _backgroundColor;
}

- (void)setBackgroundColor:(NSColor*)color {
    _backgroundColor = color;
}

- (void)dealloc {
    requireMain("the end of a window");
    std::erase(living(), self);
}

+ (NSArray<NSWindow*>*)vantrel_all {
    NSMutableArray* windows = [NSMutableArray arrayWithCapacity:living().size()];
    for (NSWindow* window : living()) [windows addObject:window];
    return windows;
}

- (vantrel::Window*)vantrel_virtualWindow {
    return [self vantrel_isBorderless] ? nullptr : [self vantrel_makeWindow];
}

- (vantrel::Rect)vantrel_frame {
    return rectOf(_frame);
}

- (bool)vantrel_isBorderless {
    return _styleMask == NSWindowStyleMaskBorderless;
}

- (vantrel::Window*)vantrel_makeWindow {
    if (_window || _isClosed) return _window.get();
    vantrel::WindowDescription description;
    description.contentRect = rectOf(_frame);
    description.styleMask = static_cast<unsigned>(_styleMask);
    description.title = bytesOf(self.title);
    description.releasedWhenClosed = self.releasedWhenClosed;
    for (NSView* view in _contentView.subviews) description.views.push_back([view vantrel_viewDescription]);
    __weak NSWindow* weak = self;
    _window = mac().parts().windows.makeWindow(description, [weak](std::string_view identifier) {
        withPool([weak, pressed = std::string(identifier)] { [weak vantrel_press:pressed]; })();
    });
    for (const auto& state : mac().windows().all()) _number = std::max(_number, state.number);
    [_contentView vantrel_tellState];
    return _window.get();
}

- (vantrel::Overlay*)vantrel_makeOverlay {
    if (_overlay || _isClosed) return _overlay.get();
    vantrel::OverlayDescription description;
    description.frame = rectOf(_frame);
    description.level = static_cast<int>(_level);
    description.collectionBehavior = static_cast<unsigned>(self.collectionBehavior);
    description.labels = overlayLabels(_contentView);
    _overlay = mac().parts().overlays.makeOverlay(description);
    return _overlay.get();
}

- (void)vantrel_press:(const std::string&)identifier {
    NSView* view = [_contentView vantrel_named:identifier];
    if ([view isKindOfClass:[NSControl class]]) [(NSControl*)view performClick:nil];
}

- (__kindof NSView*)contentView {
    return _contentView;
}

- (void)setContentView:(NSView*)view {
    [_contentView vantrel_moveToWindow:nil];
    _contentView = view;
    [view vantrel_moveToWindow:self];
}

- (NSWindowStyleMask)styleMask {
    if (!_window) return _styleMask;
    return _window->styleMask();
}

- (void)setStyleMask:(NSWindowStyleMask)mask {
    _styleMask = mask;
    if (auto* window = [self vantrel_makeWindow]) window->setStyleMask(static_cast<unsigned>(mask));
}

- (NSWindowLevel)level {
    return _level;
}

- (void)setLevel:(NSWindowLevel)level {
    requireMain("setLevel:");
    _level = level;
    if (_overlay) _overlay->setLevel(static_cast<int>(level));
}

- (BOOL)isVisible {
    if ([self vantrel_isBorderless]) return _isShownOverlay;
    if (!_window) return NO;
    const auto all = mac().windows().all();
    return std::any_of(all.begin(), all.end(),
                       [number = _number](const auto& state) { return state.number == number && state.visible; });
}

- (BOOL)canBecomeKeyWindow {
    return ![self vantrel_isBorderless];
}

- (BOOL)canBecomeMainWindow {
    return ![self vantrel_isBorderless];
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    return [_contentView performKeyEquivalent:event];
}

- (void)center {
    if (auto* window = [self vantrel_makeWindow]) window->center();
}

- (void)setFrame:(NSRect)frame display:(BOOL)display {
    (void)display;
    requireMain("setFrame:");
    if (_window || _overlay) raise(@"NSInvalidArgumentException", @"moving a window that stands is not stood in for");
    _frame = frame;
    // The last step in preparing a cover.
    if ([self vantrel_isBorderless]) [self vantrel_makeOverlay];
}

- (void)makeKeyAndOrderFront:(id)sender {
    (void)sender;
    auto* const window = [self vantrel_makeWindow];
    if (window == nullptr) return;
    window->makeKeyAndOrderFront();
    keepOnScreen(self, true);
}

- (void)orderFrontRegardless {
    requireMain("orderFrontRegardless");
    if (_window) mac().windows().orderFrontRegardless(_number);
    auto* const overlay = [self vantrel_isBorderless] ? [self vantrel_makeOverlay] : nullptr;
    if (overlay == nullptr) return;
    overlay->orderFrontRegardless();
    _isShownOverlay = true;
    keepOnScreen(self, true);
}

- (void)orderOut:(id)sender {
    (void)sender;
    requireMain("orderOut:");
    if (_window) _window->orderOut();
    if (_overlay) _overlay->orderOut();
    _isShownOverlay = false;
    keepOnScreen(self, false);
}

// A window that is released when closed is destroyed with the last reference other than the caller's.
- (void)close {
    requireMain("close");
    if (_isClosed) return;
    _isClosed = true;
    _isShownOverlay = false;
    NSWindow* const self_ = self;
    if (self_->_overlay) self_->_overlay->close();
    self_->_overlay.reset();
    self_->_window.reset();
    std::erase(living(), self_);
    keepOnScreen(self_, false);
    if (self_.releasedWhenClosed) CFRelease((__bridge CFTypeRef)self_);
}

@end

@implementation NSWindow (NSScripting)

- (void)setIsVisible:(BOOL)flag {
    auto* const window = [self vantrel_makeWindow];
    if (window == nullptr) return;
    window->setIsVisible(flag);
    keepOnScreen(self, flag);
}

@end

@interface NSWindow (VantrelMaking)
- (vantrel::Window*)vantrel_makeWindow;
@end
