#include "platform/macos/ui/ClientFront.h"

#include "platform/macos/apps/FrontTrace.h"

namespace vantrel::macos {

bool showsAWindow(NSApplication* application) {
    for (NSWindow* window in application.windows) {
        if (window.visible && window.canBecomeMainWindow) return true;
    }
    return false;
}

namespace {

void ask(NSApplication* application) {
    NSRunningApplication* client = NSRunningApplication.currentApplication;
    if (@available(macOS 14.0, *)) {
        [application activate];
        FrontTrace::made(client, "activate");
    } else {
        [application activateIgnoringOtherApps:YES];
        FrontTrace::made(client, "activateIgnoringOtherApps");
    }
}

// By what is documented the last request does no more than the first one. On some systems, it is reported, it does.
void insist(NSApplication* application) {
    // "Hide Others" of another application has hidden it.
    if (application.hidden) [application unhide:nil];
    NSRunningApplication* client = NSRunningApplication.currentApplication;
    if (@available(macOS 14.0, *)) {
        NSRunningApplication* frontmost = NSWorkspace.sharedWorkspace.frontmostApplication;
        if (frontmost != nil) {
            FrontTrace::answered(client, "activateFromApplication",
                                 [client activateFromApplication:frontmost options:0]);
        }
    }
    for (NSWindow* window in application.windows) {
        if (window.visible && window.canBecomeMainWindow) [window orderFrontRegardless];
    }
    if (@available(macOS 14.0, *)) {
        [application activateIgnoringOtherApps:YES];
        FrontTrace::made(client, "activateIgnoringOtherApps");
    }
}

}  // namespace

// There is no answer.
void bringClientToFront(NSApplication* application) {
    ask(application);
    if (!application.active) insist(application);
    FrontTrace::lookLater();
}

}  // namespace vantrel::macos
