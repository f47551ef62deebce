#import <AVFoundation/AVFoundation.h>

#include "tests/macos/standins/MacInUse.h"

using vantrel::standins::mac;
using vantrel::standins::withPool;

AVMediaType const AVMediaTypeVideo = @"vide";
AVMediaType const AVMediaTypeAudio = @"soun";

namespace {

vantrel::MediaType mediaOf(AVMediaType type) {
    return [type isEqualToString:AVMediaTypeAudio] ? vantrel::MediaType::audio : vantrel::MediaType::video;
}

}  // namespace

@implementation AVCaptureDevice

+ (AVAuthorizationStatus)authorizationStatusForMediaType:(AVMediaType)mediaType {
    return static_cast<AVAuthorizationStatus>(mac().parts().captureAuthorization.status(mediaOf(mediaType)));
}

+ (void)requestAccessForMediaType:(AVMediaType)mediaType completionHandler:(void (^)(BOOL granted))handler {
    mac().parts().captureAuthorization.requestAccess(
        mediaOf(mediaType), [handler](bool granted) { withPool([handler, granted] { handler(granted); })(); });
}

@end
