#include "platform/macos/ui/MacAlerts.h"

#import <AppKit/AppKit.h>

#include <algorithm>

#include "platform/macos/bridge/Text.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

static_assert(static_cast<NSUInteger>(AlertStyle::warning) == NSAlertStyleWarning);
static_assert(static_cast<NSUInteger>(AlertStyle::informational) == NSAlertStyleInformational);
static_assert(static_cast<NSUInteger>(AlertStyle::critical) == NSAlertStyleCritical);

namespace {

// Covers and status items never become main.
bool hasAWindow(NSApplication* application) {
    for (NSWindow* window in application.windows) {
        if (window.visible && window.canBecomeMainWindow) return true;
    }
    return false;
}

constexpr NSWindowCollectionBehavior everywhere =
    NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;

// By itself, the system shows no other application's window in the Space of a full-screen one, and none above the
// client's own covers. A click is not to bring the client to the front; where the alert makes its own panel, it does.
void showEverywhere(NSApplication* application, NSWindow* panel) {
    NSWindowLevel level = NSModalPanelWindowLevel;
    for (NSWindow* window in application.windows) {
        if (window.visible) level = std::max(level, window.level + 1);
    }
    panel.level = level;
    panel.styleMask |= NSWindowStyleMaskNonactivatingPanel;
    panel.collectionBehavior = everywhere;
    panel.canHide = NO;
    panel.hidesOnDeactivate = NO;
    if (application.hidden) [application unhideWithoutActivation];
}

// Nobody can answer what nobody sees.
void letIn(NSWindow* panel) {
    if ((panel.occlusionState & NSWindowOcclusionStateVisible) != 0) return;
    [panel orderFrontRegardless];
    panel.collectionBehavior = everywhere | NSWindowCollectionBehaviorCanJoinAllApplications;
}

// Looks at the panel once it has been up for a second. Under an alert only timers of the common modes fire.
class SightCheck {
  public:
    explicit SightCheck(NSWindow* panel) {
        constexpr NSTimeInterval seconds = 1.0;
        timer_ = [NSTimer timerWithTimeInterval:seconds
                                        repeats:NO
                                          block:^(NSTimer*) {
                                            letIn(panel);
                                          }];
        [NSRunLoop.mainRunLoop addTimer:timer_ forMode:NSRunLoopCommonModes];
    }
    ~SightCheck() { [timer_ invalidate]; }
    SightCheck(const SightCheck&) = delete;
    SightCheck& operator=(const SightCheck&) = delete;

  private:
    NSTimer* timer_;
};

NSModalResponse runSeen(NSAlert* alert) {
    const SightCheck check(alert.window);
    return [alert runModal];
}

// In a lockdown the client has no window, and the browser is in front on a Space of its own. Nobody would see a
// question on another Space, and it would hold up everything else. Going there would mean leaving the meeting.
NSModalResponse runWhereTheUserIs(NSAlert* alert) {
    NSApplication* application = NSApplication.sharedApplication;
    if (hasAWindow(application)) return [alert runModal];
    NSRunningApplication* before = application.active ? nil : NSWorkspace.sharedWorkspace.frontmostApplication;
    showEverywhere(application, alert.window);
    const NSModalResponse response = runSeen(alert);
    // The click on the alert's button has brought the client to the front, where nothing takes keys. So give the front
    // back, unless the answer has shown a window meanwhile.
    dispatch_async(dispatch_get_main_queue(), ^{
      if (application.active && !hasAWindow(application)) [before activateWithOptions:0];
    });
    return response;
}

}  // namespace

std::size_t MacAlerts::runModal(const Alert& alert) {
    requireMainThread("runModal");
    NSAlert* shown = [[NSAlert alloc] init];
    shown.alertStyle = static_cast<NSAlertStyle>(alert.style);
    shown.messageText = lenientText(alert.messageText);
    shown.informativeText = lenientText(alert.informativeText);
    for (const std::string& button : alert.buttons) [shown addButtonWithTitle:lenientText(button)];

    const NSModalResponse response = runWhereTheUserIs(shown);
    // Without buttons there is still the system's own OK.
    const std::size_t last = std::max<std::size_t>(alert.buttons.size(), 1) - 1;
    if (response < NSAlertFirstButtonReturn) return last;
    return std::min(static_cast<std::size_t>(response - NSAlertFirstButtonReturn), last);
}

}  // namespace vantrel::macos
