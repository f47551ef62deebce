// Declarations only, written from the public documentation; see packaging/macos/declarations/README.md.
#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NSString* AVMediaType;
FOUNDATION_EXPORT AVMediaType const AVMediaTypeVideo API_AVAILABLE(macos(10.7));
FOUNDATION_EXPORT AVMediaType const AVMediaTypeAudio API_AVAILABLE(macos(10.7));

typedef NS_ENUM(NSInteger, AVAuthorizationStatus) {
    AVAuthorizationStatusNotDetermined = 0,
    AVAuthorizationStatusRestricted = 1,
    AVAuthorizationStatusDenied = 2,
    AVAuthorizationStatusAuthorized = 3,
} API_AVAILABLE(macos(10.14));

API_AVAILABLE(macos(10.7))
@interface AVCaptureDevice : NSObject
+ (AVAuthorizationStatus)authorizationStatusForMediaType:(AVMediaType)mediaType API_AVAILABLE(macos(10.14));
+ (void)requestAccessForMediaType:(AVMediaType)mediaType
                completionHandler:(void (^)(BOOL granted))handler API_AVAILABLE(macos(10.14));
@end

#pragma clang assume_nonnull end
