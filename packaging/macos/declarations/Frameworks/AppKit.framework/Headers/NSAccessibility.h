// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <AppKit/NSAccessibilityConstants.h>

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id>* _Nullable userInfo) API_AVAILABLE(macos(10.7));

NS_ASSUME_NONNULL_END
