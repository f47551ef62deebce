#import <AppKit/AppKit.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

NSAccessibilityNotificationName const NSAccessibilityAnnouncementRequestedNotification = @"AXAnnouncementRequested";
NSAccessibilityNotificationUserInfoKey const NSAccessibilityAnnouncementKey = @"AXAnnouncementKey";
NSAccessibilityNotificationUserInfoKey const NSAccessibilityPriorityKey = @"AXPriorityKey";

// Announcements are made by a window or the application.
void NSAccessibilityPostNotificationWithUserInfo(id element, NSAccessibilityNotificationName notification,
                                                 NSDictionary<NSAccessibilityNotificationUserInfoKey, id>* userInfo) {
    requireMain("NSAccessibilityPostNotificationWithUserInfo");
    if (![notification isEqualToString:NSAccessibilityAnnouncementRequestedNotification]) {
        fatal("a notification for a screen reader that is not stood in for");
    }
    if (![element isKindOfClass:[NSWindow class]] && element != NSApp) fatal("an announcement by something else");
    id text = [userInfo objectForKey:NSAccessibilityAnnouncementKey];
    id priority = [userInfo objectForKey:NSAccessibilityPriorityKey];
    if (![text isKindOfClass:[NSString class]]) fatal("an announcement without a text");
    if (priority != nil && ![priority isKindOfClass:[NSNumber class]]) fatal("an announcement's odd priority");
    mac().windows().announce(bytesOf(text));
}
