#include "platform/macos/ui/MacWindows.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "platform/macos/bridge/RectBridge.h"
#include "platform/macos/bridge/Text.h"
#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/ControlBuilder.h"

@implementation VantrelButtonTarget {
    vantrel::Windows::ActionHandler _handler;
}

- (instancetype)initWithHandler:(vantrel::Windows::ActionHandler)handler {
    self = [super init];
    if (self != nil) _handler = std::move(handler);
    return self;
}

- (void)buttonPressed:(NSView*)sender {
    // A hidden button keeps its key equivalent. No page says that the key does not reach it.
    if (sender.hiddenOrHasHiddenAncestor) return;
    // Copies: the handler may destroy the window, and everything here with it.
    const vantrel::Windows::ActionHandler handler = _handler;
    const std::string pressed = vantrel::macos::bytesOf(sender.identifier);
    if (handler) handler(pressed);
}

- (void)forget {
    _handler = nullptr;
}

@end

namespace vantrel::macos {

static_assert(static_cast<NSUInteger>(windowTitled) == NSWindowStyleMaskTitled);
static_assert(static_cast<NSUInteger>(windowClosable) == NSWindowStyleMaskClosable);
static_assert(static_cast<NSUInteger>(windowMiniaturizable) == NSWindowStyleMaskMiniaturizable);
static_assert(static_cast<NSUInteger>(viewWidthSizable) == NSViewWidthSizable);
static_assert(static_cast<NSUInteger>(viewHeightSizable) == NSViewHeightSizable);

MacWindow::MacWindow(const WindowDescription& description, Windows::ActionHandler onAction)
    : window_([[NSWindow alloc] initWithContentRect:cgRect(description.contentRect)
                                          styleMask:static_cast<NSWindowStyleMask>(description.styleMask)
                                            backing:NSBackingStoreBuffered
                                              defer:NO]),
      target_([[VantrelButtonTarget alloc] initWithHandler:std::move(onAction)]) {
    window_.title = lenientText(description.title);
    window_.releasedWhenClosed = description.releasedWhenClosed;
    std::vector<NSView*> forTab;
    for (const View& view : description.views) addView(view, forTab);
    linkForTab(forTab);
}

// AppKit may still be handling an event of this window, such as the press that led here.
MacWindow::~MacWindow() {
    requireMainThread("the end of a window");
    [target_ forget];
    NSWindow* window = window_;
    VantrelButtonTarget* target = target_;
    [window orderOut:nil];
    dispatch_async(dispatch_get_main_queue(), ^{
      (void)target;
      [window close];
    });
}

void MacWindow::addView(const View& view, std::vector<NSView*>& forTab) {
    NSView* made = [[NSView alloc] initWithFrame:cgRect(view.frame)];
    made.autoresizingMask = static_cast<NSAutoresizingMaskOptions>(view.autoresizingMask);
    made.hidden = view.hidden;
    made.identifier = lenientText(view.id);
    for (const Control& control : view.controls) {
        NSView* child = appKitControl(control, target_, @selector(buttonPressed:));
        [made addSubview:child];
        if (!control.id.empty()) controls_.emplace(control.id, child);
        if (control.announced) statuses_.add(static_cast<NSControl*>(child));
        if (control.kind == Control::Kind::textField || control.kind == Control::Kind::button) forTab.push_back(child);
    }
    [window_.contentView addSubview:made];
    if (!view.id.empty()) views_.emplace(view.id, made);
}

// AppKit would go by the places on the screen.
void MacWindow::linkForTab(const std::vector<NSView*>& views) {
    for (std::size_t index = 0; index < views.size(); ++index) {
        views[index].nextKeyView = views[(index + 1) % views.size()];
    }
    if (!views.empty()) window_.initialFirstResponder = views.front();
}

NSView* MacWindow::named(const ViewsById& views, std::string_view id) {
    const auto found = views.find(id);
    if (found != views.end()) return found->second;
    std::fprintf(stderr, "vantrel: no control or view is called %.*s\n", static_cast<int>(id.size()), id.data());
    std::abort();
}

void MacWindow::center() {
    requireMainThread("center");
    [window_ center];
}

void MacWindow::setIsVisible(bool visible) {
    requireMainThread("setIsVisible");
    [window_ setIsVisible:visible];
    statuses_.update(window_);
}

void MacWindow::makeKeyAndOrderFront() {
    requireMainThread("makeKeyAndOrderFront");
    [window_ makeKeyAndOrderFront:nil];
    statuses_.update(window_);
}

void MacWindow::orderOut() {
    requireMainThread("orderOut");
    [window_ orderOut:nil];
    statuses_.update(window_);
}

unsigned MacWindow::styleMask() const {
    requireMainThread("styleMask");
    return static_cast<unsigned>(window_.styleMask);
}

void MacWindow::setStyleMask(unsigned mask) {
    requireMainThread("setStyleMask");
    window_.styleMask = static_cast<NSWindowStyleMask>(mask);
}

// A button's string value is its state. Its text is the title.
std::optional<std::string> MacWindow::text(std::string_view id) const {
    requireMainThread("text");
    const auto found = controls_.find(id);
    if (found == controls_.end()) return std::nullopt;
    NSView* view = found->second;
    if ([view isKindOfClass:[NSButton class]]) return bytesOf(static_cast<NSButton*>(view).title);
    if ([view isKindOfClass:[NSControl class]]) return bytesOf(static_cast<NSControl*>(view).stringValue);
    return std::string();
}

void MacWindow::setText(std::string_view id, std::string_view text) {
    requireMainThread("setText");
    NSView* view = named(controls_, id);
    if ([view isKindOfClass:[NSButton class]]) {
        static_cast<NSButton*>(view).title = lenientText(text);
    } else if ([view isKindOfClass:[NSControl class]]) {
        static_cast<NSControl*>(view).stringValue = lenientText(text);
    }
    statuses_.update(window_);
}

void MacWindow::setEnabled(std::string_view id, bool enabled) {
    requireMainThread("setEnabled");
    NSView* view = named(controls_, id);
    if ([view isKindOfClass:[NSControl class]]) static_cast<NSControl*>(view).enabled = enabled;
}

void MacWindow::setViewHidden(std::string_view viewId, bool hidden) {
    requireMainThread("setViewHidden");
    named(views_, viewId).hidden = hidden;
    statuses_.update(window_);
}

std::unique_ptr<Window> MacWindows::makeWindow(const WindowDescription& description, ActionHandler onAction) {
    requireMainThread("makeWindow");
    return std::make_unique<MacWindow>(description, std::move(onAction));
}

}  // namespace vantrel::macos
