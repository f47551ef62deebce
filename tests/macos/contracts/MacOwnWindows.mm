#include "tests/macos/contracts/MacOwnWindows.h"

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

namespace {

NSView* viewNamed(NSView* view, NSString* identifier) {
    if ([view.identifier isEqualToString:identifier]) return view;
    for (NSView* child in view.subviews) {
        if (NSView* found = viewNamed(child, identifier)) return found;
    }
    return nil;
}

NSArray<NSWindow*>* frontToBack() {
    NSMutableArray<NSWindow*>* windows = [NSMutableArray arrayWithCapacity:1];
    for (NSWindow* window in NSApplication.sharedApplication.orderedWindows) {
        if (window.visible) [windows addObject:window];
    }
    return windows;
}

}  // namespace

std::vector<std::string> MacOwnWindows::shown() {
    std::vector<std::string> titles;
    for (NSWindow* window in frontToBack()) titles.push_back(bytesOf(window.title));
    return titles;
}

NSControl* MacOwnWindows::control(const std::string& identifier) {
    for (NSWindow* window in frontToBack()) {
        NSView* found = window.contentView != nil ? viewNamed(window.contentView, lenientText(identifier)) : nil;
        const bool isSeen = [found isKindOfClass:[NSControl class]] && !found.hiddenOrHasHiddenAncestor;
        return isSeen ? static_cast<NSControl*>(found) : nil;
    }
    return nil;
}

std::string MacOwnWindows::text(NSControl* control) {
    const bool isButton = [control isKindOfClass:[NSButton class]];
    return bytesOf(isButton ? static_cast<NSButton*>(control).title : control.stringValue);
}

std::vector<std::string> MacOwnWindows::tabOrder() {
    std::vector<std::string> identifiers;
    for (NSWindow* window in frontToBack()) {
        NSView* const first = window.initialFirstResponder;
        for (NSView* view = first; view != nil; view = view.nextKeyView == first ? nil : view.nextKeyView) {
            const bool takesKeys = !view.hiddenOrHasHiddenAncestor && static_cast<NSControl*>(view).enabled;
            if (takesKeys) identifiers.push_back(bytesOf(view.identifier));
        }
        break;
    }
    return identifiers;
}

void MacOwnWindows::press(const std::string& identifier) {
    [control(identifier) performClick:nil];
}

Block MacOwnWindows::heldPress(const std::string& identifier) {
    // The window owns it, and it must be destroyed on the main thread.
    __weak NSControl* pressed = control(identifier);
    return [pressed] { [pressed performClick:nil]; };
}

void MacOwnWindows::pressReturn() {
    constexpr unsigned short keyCode = 36;
    NSEvent* event = [NSEvent keyEventWithType:NSEventTypeKeyDown
                                      location:NSMakePoint(0, 0)
                                 modifierFlags:static_cast<NSEventModifierFlags>(0)
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                    characters:@"\r"
                   charactersIgnoringModifiers:@"\r"
                                     isARepeat:NO
                                       keyCode:keyCode];
    if (event == nil) return;
    for (NSWindow* window in frontToBack()) {
        [window performKeyEquivalent:event];
        return;
    }
}

void MacOwnWindows::typeInto(const std::string& identifier, const std::string& text) {
    NSControl* field = control(identifier);
    if (field.enabled) field.stringValue = lenientText(text);
}

bool MacOwnWindows::isAvailableInMainMenu(const std::string& menu, const std::string& item) {
    for (NSMenuItem* entry in NSApplication.sharedApplication.mainMenu.itemArray) {
        if (bytesOf(entry.submenu.title) != menu) continue;
        // The system enables the items of a menu only when it is about to be shown.
        [entry.submenu update];
        for (NSMenuItem* each in entry.submenu.itemArray) {
            if ([each.title isEqualToString:lenientText(item)]) return each.enabled;
        }
    }
    return false;
}

bool MacOwnWindows::chooseFromMainMenu(const std::string& menu, const std::string& item) {
    for (NSMenuItem* entry in NSApplication.sharedApplication.mainMenu.itemArray) {
        if (bytesOf(entry.submenu.title) != menu) continue;
        const NSInteger index = [entry.submenu indexOfItemWithTitle:lenientText(item)];
        if (index < 0) return false;
        [entry.submenu performActionForItemAtIndex:index];
        return true;
    }
    return false;
}

}  // namespace vantrel::macos
