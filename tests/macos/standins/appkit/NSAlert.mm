#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/OwnApplication.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@implementation NSAlert {
    std::vector<std::string> _buttons;
    NSWindow* _window;
}

- (NSButton*)addButtonWithTitle:(NSString*)title {
    if (title == nil) raise(@"NSInvalidArgumentException", @"a button without a title");
    _buttons.push_back(bytesOf(title));
    return [NSButton buttonWithTitle:title target:nil action:nil];
}

- (NSWindow*)window {
    if (_window == nil) {
        _window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 0, 0)
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
    const std::size_t pressed = mac().parts().alerts.runModal(alert);
    [NSApp vantrel_setModalWindow:before];
    return NSAlertFirstButtonReturn + static_cast<NSModalResponse>(pressed);
}

@end
