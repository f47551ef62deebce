#include "platform/macos/MacAlerts.h"

#import <AppKit/AppKit.h>

#include <algorithm>

#include "platform/macos/MainThread.h"
#include "platform/macos/Text.h"

namespace vantrel::macos {

static_assert(static_cast<NSUInteger>(AlertStyle::warning) == NSAlertStyleWarning);
static_assert(static_cast<NSUInteger>(AlertStyle::informational) == NSAlertStyleInformational);
static_assert(static_cast<NSUInteger>(AlertStyle::critical) == NSAlertStyleCritical);

namespace {

// In a lockdown the browser is in front and fills a Space of its own, into which the system lets no other application's
// window by itself. To come to the client's own Space for the question would be to leave the meeting.
void bringWhereTheUserIs(NSWindow* panel) {
    panel.collectionBehavior =
        NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
    if (NSApplication.sharedApplication.active) return;
    panel.styleMask |= NSWindowStyleMaskNonactivatingPanel;
    panel.level = NSModalPanelWindowLevel;
}

}  // namespace

std::size_t MacAlerts::runModal(const Alert& alert) {
    requireMainThread("runModal");
    NSAlert* shown = [[NSAlert alloc] init];
    shown.alertStyle = static_cast<NSAlertStyle>(alert.style);
    shown.messageText = lenientText(alert.messageText);
    shown.informativeText = lenientText(alert.informativeText);
    for (const std::string& button : alert.buttons) [shown addButtonWithTitle:lenientText(button)];
    bringWhereTheUserIs(shown.window);

    const NSModalResponse response = [shown runModal];
    // With no buttons there is still the system's own OK.
    const std::size_t last = std::max<std::size_t>(alert.buttons.size(), 1) - 1;
    if (response < NSAlertFirstButtonReturn) return last;
    return std::min(static_cast<std::size_t>(response - NSAlertFirstButtonReturn), last);
}

}  // namespace vantrel::macos
