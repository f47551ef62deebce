#import <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/OwnApplication.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

/// The panel of an alert. It is one of the virtual Mac's alerts while it is up, and none of its windows.
@interface VantrelAlertPanel : NSWindow <VantrelModalWindow>
- (const vantrel::virtualmac::VirtualAlerts::PanelPointer&)vantrel_panel;
@end

@implementation VantrelAlertPanel {
    vantrel::virtualmac::VirtualAlerts::PanelPointer _panel;
    NSWindowStyleMask _askedStyle;
}

- (const vantrel::virtualmac::VirtualAlerts::PanelPointer&)vantrel_panel {
    if (!_panel) _panel = std::make_shared<vantrel::virtualmac::AlertPanel>();
    return _panel;
}

- (NSWindowStyleMask)styleMask {
    return _askedStyle | NSWindowStyleMaskTitled;
}

- (void)setStyleMask:(NSWindowStyleMask)mask {
    requireMain("setStyleMask:");
    _askedStyle = mask;
    [self vantrel_panel]->asksNotToActivate = (mask & NSWindowStyleMaskNonactivatingPanel) != 0;
}

- (NSWindowCollectionBehavior)collectionBehavior {
    return static_cast<NSWindowCollectionBehavior>([self vantrel_panel]->collectionBehavior);
}

- (void)setCollectionBehavior:(NSWindowCollectionBehavior)behavior {
    requireMain("setCollectionBehavior:");
    mac().alerts().setCollectionBehavior([self vantrel_panel], static_cast<unsigned>(behavior));
}

// An alert that lies under another one of the client counts as covered by it.
- (NSWindowOcclusionState)occlusionState {
    const bool seen = mac().alerts().isInFront([self vantrel_panel]) && mac().alerts().isSeen(*[self vantrel_panel]);
    return static_cast<NSWindowOcclusionState>(seen ? NSWindowOcclusionStateVisible : 0);
}

- (void)vantrel_endWith:(NSModalResponse)response {
    mac().alerts().stop([self vantrel_panel], static_cast<std::size_t>(response - NSAlertFirstButtonReturn));
}

- (void)orderFrontRegardless {
    requireMain("orderFrontRegardless");
    mac().alerts().orderFrontRegardless([self vantrel_panel]);
}

@end

@implementation NSAlert {
    std::vector<std::string> _buttons;
    VantrelAlertPanel* _window;
}

- (NSButton*)addButtonWithTitle:(NSString*)title {
    if (title == nil) raise(@"NSInvalidArgumentException", @"a button without a title");
    _buttons.push_back(bytesOf(title));
    return [NSButton buttonWithTitle:title target:nil action:nil];
}

- (NSWindow*)window {
    if (_window == nil) {
        _window = [[VantrelAlertPanel alloc] initWithContentRect:NSMakeRect(0, 0, 0, 0)
                                                       styleMask:NSWindowStyleMaskTitled
                                                         backing:NSBackingStoreBuffered
                                                           defer:YES];
        _window.releasedWhenClosed = NO;
    }
    return _window;
}

- (NSModalResponse)runModal {
    requireMain("runModal");
    vantrel::Alert alert;
    alert.style = static_cast<vantrel::AlertStyle>(self.alertStyle);
    alert.messageText = bytesOf(self.messageText);
    alert.informativeText = bytesOf(self.informativeText);
    alert.buttons = _buttons;
    NSWindow* const before = [NSApp vantrel_setModalWindow:self.window];
    const std::size_t pressed = mac().alerts().run(alert, [_window vantrel_panel]);
    [NSApp vantrel_setModalWindow:before];
    return NSAlertFirstButtonReturn + static_cast<NSModalResponse>(pressed);
}

@end
