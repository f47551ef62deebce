#include "platform/macos/ui/MacAlerts.h"

#include <algorithm>

#include "platform/macos/apps/MacRunningApplications.h"
#include "platform/macos/bridge/Text.h"
#include "platform/macos/threads/MacDispatch.h"
#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/AlertSight.h"
#include "platform/macos/ui/ClientFront.h"
#include "platform/portable/FrontRequests.h"

namespace vantrel::macos {

static_assert(static_cast<NSUInteger>(AlertStyle::warning) == NSAlertStyleWarning);
static_assert(static_cast<NSUInteger>(AlertStyle::informational) == NSAlertStyleInformational);
static_assert(static_cast<NSUInteger>(AlertStyle::critical) == NSAlertStyleCritical);

namespace {

constexpr int mostGivings = 2;

bool hasTakenTheFront(NSApplication* application) {
    return application.active && !showsAWindow(application) && application.modalWindow == nil;
}

}  // namespace

// From macOS 14 on, the system may say yes and not follow. A second request goes further than the first one.
void MacAlerts::giveTheFrontBack(const std::shared_ptr<InFront>& before, int times) {
    NSApplication* application = NSApplication.sharedApplication;
    // A later alert over the client itself takes nobody's place.
    if (!application.active || showsAWindow(application)) *before = InFront{};
    NSRunningApplication* chosen =
        MacRunningApplication::wrap(before->application) ? before->application : before->successor;
    const auto giveTo = MacRunningApplication::wrap(chosen);
    if (times == 0 || !giveTo || !hasTakenTheFront(application)) return;
    if (@available(macOS 14.0, *)) {
        NSString* identifier = chosen.bundleIdentifier;
        if (identifier != nil) [application yieldActivationToApplicationWithBundleIdentifier:identifier];
    }
    giveTo->activate(ActivationOptions::none);
    // A copy: a block would keep the reference.
    const std::shared_ptr<InFront> kept = before;  // NOLINT(performance-unnecessary-copy-initialization)
    dispatch_after(timeFromNow(FrontRequests::soon), dispatch_get_main_queue(), ^{
      giveTheFrontBack(kept, times - 1);
    });
}

void MacAlerts::rememberWhoIsInFront() {
    if (NSApplication.sharedApplication.active || MacRunningApplication::wrap(before_->application)) return;
    before_->successor = NSWorkspace.sharedWorkspace.frontmostApplication;
}

// In a lockdown the client has no window, and the browser is in front on a Space of its own. Nobody would see a
// question on another Space, and it would hold up everything else. Going there would mean leaving the meeting.
NSModalResponse MacAlerts::runWhereTheUserIs(NSAlert* alert, std::size_t lastButton) {
    NSApplication* application = NSApplication.sharedApplication;
    if (showsAWindow(application)) return [alert runModal];
    if (!application.active) *before_ = InFront{NSWorkspace.sharedWorkspace.frontmostApplication};
    NSModalResponse response = 0;
    {
        const AlertSight sight(alert, static_cast<NSInteger>(lastButton), [this] { rememberWhoIsInFront(); });
        response = [alert runModal];
    }
    // The click on the alert's button may have brought the client to the front, where nothing takes keys. So the front
    // is given back, unless the answer has shown a window meanwhile.
    const std::shared_ptr<InFront> before = before_;
    dispatch_async(dispatch_get_main_queue(), ^{
      giveTheFrontBack(before, mostGivings);
    });
    return response;
}

std::size_t MacAlerts::runModal(const Alert& alert) {
    requireMainThread("runModal");
    NSAlert* shown = [[NSAlert alloc] init];
    shown.alertStyle = static_cast<NSAlertStyle>(alert.style);
    shown.messageText = lenientText(alert.messageText);
    shown.informativeText = lenientText(alert.informativeText);
    for (const std::string& button : alert.buttons) [shown addButtonWithTitle:lenientText(button)];

    // Without buttons there is still the system's own OK.
    const std::size_t last = std::max<std::size_t>(alert.buttons.size(), 1) - 1;
    const NSModalResponse response = runWhereTheUserIs(shown, last);
    if (response < NSAlertFirstButtonReturn) return last;
    return std::min(static_cast<std::size_t>(response - NSAlertFirstButtonReturn), last);
}

}  // namespace vantrel::macos
