#include "platform/macos/ui/AlertSight.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/macos/bridge/Text.h"
#include "platform/macos/system/MacISO8601DateFormatter.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/ui/ClientFront.h"
#include "platform/portable/StandardError.h"

namespace vantrel::macos {

namespace {

constexpr NSTimeInterval secondsBetweenLooks = 1.0;
constexpr int mostUnseenLooks = 10;

constexpr NSWindowCollectionBehavior everywhere =
    NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;

// The client's covers are raised again and again.
void putAboveAll(NSApplication* application, NSWindow* panel) {
    NSWindowLevel level = NSModalPanelWindowLevel;
    for (NSWindow* window in application.windows) {
        if (window.visible && window != panel) level = std::max(level, window.level + 1);
    }
    panel.level = level;
}

// By itself, the system shows no other application's window in the Space of a full-screen one, and none above the
// client's own covers. A click is not to bring the client to the front; where the alert makes its own panel, it does.
void showEverywhere(NSApplication* application, NSWindow* panel) {
    putAboveAll(application, panel);
    panel.styleMask |= NSWindowStyleMaskNonactivatingPanel;
    panel.collectionBehavior = everywhere;
    panel.canHide = NO;
    panel.hidesOnDeactivate = NO;
    if (application.hidden) [application unhideWithoutActivation];
}

bool isSeen(NSWindow* panel) {
    return (panel.occlusionState & NSWindowOcclusionStateVisible) != 0;
}

// A modal loop that is stopped by a timer only ends with its next event.
void wakeModalLoop(NSApplication* application) {
    NSEvent* nothing = [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                          location:NSMakePoint(0, 0)
                                     modifierFlags:0
                                         timestamp:0
                                      windowNumber:0
                                           context:nil
                                           subtype:0
                                             data1:0
                                             data2:0];
    if (nothing != nil) [application postEvent:nothing atStart:YES];
}

}  // namespace

// Under an alert only timers of the common modes fire.
AlertSight::AlertSight(NSAlert* alert, NSInteger lastButton, Block onLook)
    : alert_(alert),
      lastButton_(lastButton),
      onLook_(std::move(onLook)),
      looks_([NSTimer timerWithTimeInterval:secondsBetweenLooks
                                    repeats:YES
                                      block:^(NSTimer*) {
                                        look();
                                      }]) {
    showEverywhere(NSApplication.sharedApplication, alert.window);
    [NSRunLoop.mainRunLoop addTimer:looks_ forMode:NSRunLoopCommonModes];
}

AlertSight::~AlertSight() {
    [looks_ invalidate];
}

// Nobody can answer what nobody sees. What may bring the client to the front, and its browser out of it, comes last.
void AlertSight::look() {
    onLook_();
    NSApplication* application = NSApplication.sharedApplication;
    NSWindow* panel = alert_.window;
    // It lies under a later alert, which is looked after first: raised, it would cover that one.
    if (application.modalWindow != panel) return;
    if (isSeen(panel)) {
        unseen_ = 0;
        return;
    }
    ++unseen_;
    putAboveAll(application, panel);
    panel.collectionBehavior = everywhere | NSWindowCollectionBehaviorCanJoinAllApplications;
    [panel orderFrontRegardless];
    if (unseen_ == 1 || isSeen(panel)) return;
    if (!application.active) bringClientToFront(application);
    if (unseen_ >= mostUnseenLooks && !isSeen(panel)) giveUp();
}

void AlertSight::giveUp() {
    std::string line = "vantrel: " + MacISO8601DateFormatter().string(MacClock().secondsSince1970());
    line.append(" nobody can see an alert, so it ends as its last button: ").append(bytesOf(alert_.messageText));
    line.push_back('\n');
    sayOnStandardError(line);
    NSApplication* application = NSApplication.sharedApplication;
    [application stopModalWithCode:NSAlertFirstButtonReturn + lastButton_];
    wakeModalLoop(application);
}

}  // namespace vantrel::macos
