#include "platform/macos/system/MacCaptureAuthorization.h"

#import <AVFoundation/AVFoundation.h>

namespace vantrel::macos {

static_assert(static_cast<NSInteger>(AuthorizationStatus::notDetermined) == AVAuthorizationStatusNotDetermined);
static_assert(static_cast<NSInteger>(AuthorizationStatus::restricted) == AVAuthorizationStatusRestricted);
static_assert(static_cast<NSInteger>(AuthorizationStatus::denied) == AVAuthorizationStatusDenied);
static_assert(static_cast<NSInteger>(AuthorizationStatus::authorized) == AVAuthorizationStatusAuthorized);

namespace {

AVMediaType mediaType(MediaType media) {
    return media == MediaType::audio ? AVMediaTypeAudio : AVMediaTypeVideo;
}

}  // namespace

AuthorizationStatus MacCaptureAuthorization::status(MediaType media) const {
    return static_cast<AuthorizationStatus>([AVCaptureDevice authorizationStatusForMediaType:mediaType(media)]);
}

void MacCaptureAuthorization::requestAccess(MediaType media, std::function<void(bool granted)> completion) {
    [AVCaptureDevice requestAccessForMediaType:mediaType(media)
                             completionHandler:^(BOOL granted) {
                               completion(granted);
                             }];
}

}  // namespace vantrel::macos
