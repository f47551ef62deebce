#include "tests/macos/standins/appkit/Clicks.h"

#import <AppKit/AppKit.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/NSWindow+Virtual.h"
#include "tests/macos/standins/appkit/OwnApplication.h"
#include "tests/macos/standins/foundation/Text.h"

namespace vantrel::standins {

namespace {

bool contains(const Rect& frame, const Point& point) {
    return point.x >= frame.origin.x && point.x < frame.origin.x + frame.size.width && point.y >= frame.origin.y &&
           point.y < frame.origin.y + frame.size.height;
}

NSWindow* coverAt(const Point& point) {
    NSWindow* found = nil;
    for (NSWindow* window in [NSWindow vantrel_all]) {
        const bool isCover = window.visible && window.styleMask == NSWindowStyleMaskBorderless;
        if (!isCover || window.ignoresMouseEvents || !contains([window vantrel_frame], point)) continue;
        if (found == nil || window.level >= found.level) found = window;
    }
    return found;
}

void bringClientToFront() {
    mac().desktop().bringToFront(mac().processes().find(mac().processes().ownProcess())->asCandidate());
}

NSEvent* click() {
    return [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                              location:NSMakePoint(0, 0)
                         modifierFlags:static_cast<NSEventModifierFlags>(0)
                             timestamp:0
                          windowNumber:0
                               context:nil
                               subtype:0
                                 data1:0
                                 data2:0];
}

void press(NSView* view, MouseButton button, NSEvent* event) {
    switch (button) {
        case MouseButton::left:
            return [view mouseDown:event];
        case MouseButton::right:
            return [view rightMouseDown:event];
        case MouseButton::other:
            return [view otherMouseDown:event];
    }
}

NSEvent* returnKey() {
    constexpr unsigned short keyCode = 36;
    return [NSEvent keyEventWithType:NSEventTypeKeyDown
                            location:NSMakePoint(0, 0)
                       modifierFlags:static_cast<NSEventModifierFlags>(0)
                           timestamp:0
                        windowNumber:0
                             context:nil
                          characters:@"\r"
         charactersIgnoringModifiers:@"\r"
                           isARepeat:NO
                             keyCode:keyCode];
}

}  // namespace

void pressReturn() {
    for (NSWindow* window in [NSWindow vantrel_all]) {
        if (window.visible && window.canBecomeKeyWindow) [window performKeyEquivalent:returnKey()];
    }
}

std::vector<std::string> tabOrder() {
    std::vector<std::string> identifiers;
    for (NSWindow* window in [NSWindow vantrel_all]) {
        if (!window.visible || !window.canBecomeKeyWindow) continue;
        NSView* const first = window.initialFirstResponder;
        NSView* view = first;
        while (view != nil) {
            const bool takesKeys = !view.hiddenOrHasHiddenAncestor && static_cast<NSControl*>(view).enabled;
            if (takesKeys) identifiers.push_back(bytesOf(view.identifier));
            view = view.nextKeyView;
            if (view == first) break;
            if (view == nil) identifiers.emplace_back("the end, without a way back");
        }
    }
    return identifiers;
}

void clickOnCover(const Point& point, MouseButton button) {
    NSWindow* window = coverAt(point);
    if (window == nil) return;
    const Point corner = [window vantrel_frame].origin;
    NSView* view = [window.contentView hitTest:NSMakePoint(point.x - corner.x, point.y - corner.y)];
    NSEvent* event = click();
    const bool wasActive = NSApp.active;
    const bool delays = [view shouldDelayWindowOrderingForEvent:event];
    if (!delays) bringClientToFront();
    [NSApp vantrel_wasOrderingPrevented];
    if (wasActive || [view acceptsFirstMouse:event]) press(view, button, event);
    if (delays && ![NSApp vantrel_wasOrderingPrevented]) bringClientToFront();
}

}  // namespace vantrel::standins
