// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSAccessibilityNotificationName;
typedef NSString* NSAccessibilityNotificationUserInfoKey;

typedef NS_ENUM(NSInteger, NSAccessibilityPriorityLevel) {
    NSAccessibilityPriorityLow = 10,
    NSAccessibilityPriorityMedium = 50,
    NSAccessibilityPriorityHigh = 90,
} API_AVAILABLE(macos(10.9));

FOUNDATION_EXPORT NSAccessibilityNotificationName const NSAccessibilityAnnouncementRequestedNotification
    API_AVAILABLE(macos(10.7));
FOUNDATION_EXPORT NSAccessibilityNotificationUserInfoKey const NSAccessibilityAnnouncementKey
    API_AVAILABLE(macos(10.7));
FOUNDATION_EXPORT NSAccessibilityNotificationUserInfoKey const NSAccessibilityPriorityKey API_AVAILABLE(macos(10.9));

NS_ASSUME_NONNULL_END
