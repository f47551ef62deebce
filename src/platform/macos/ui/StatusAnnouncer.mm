#include "platform/macos/ui/StatusAnnouncer.h"

namespace vantrel::macos {

namespace {

NSString* seenIn(NSWindow* window, NSControl* label) {
    return window.visible && !label.hiddenOrHasHiddenAncestor ? label.stringValue : @"";
}

void announce(NSWindow* window, NSString* text) {
    NSAccessibilityPostNotificationWithUserInfo(window, NSAccessibilityAnnouncementRequestedNotification, @{
        NSAccessibilityAnnouncementKey : text,
        NSAccessibilityPriorityKey : [NSNumber numberWithInt:NSAccessibilityPriorityHigh]
    });
}

}  // namespace

void StatusAnnouncer::add(NSControl* label) {
    statuses_.push_back({label, @""});
}

void StatusAnnouncer::update(NSWindow* window) {
    for (Status& status : statuses_) {
        NSString* now = seenIn(window, status.label);
        if ([now isEqualToString:status.seen]) continue;
        status.seen = now;
        if (now.length > 0) announce(window, now);
    }
}

}  // namespace vantrel::macos
