#pragma once

#include <functional>

namespace vantrel {

/// AVMediaTypeAudio and AVMediaTypeVideo.
enum class MediaType { audio, video };

/// AVAuthorizationStatus. The numbers appear in log lines.
enum class AuthorizationStatus { notDetermined = 0, restricted = 1, denied = 2, authorized = 3 };

/// Access to microphone and camera (AVCaptureDevice). Any thread.
class CaptureAuthorization {
  public:
    virtual ~CaptureAuthorization() = default;

    virtual AuthorizationStatus status(MediaType media) const = 0;

    /// requestAccessForMediaType:completionHandler:. Asks the user if nothing has been decided yet. The handler is
    /// called once, on any thread.
    virtual void requestAccess(MediaType media, std::function<void(bool granted)> completion) = 0;
};

}  // namespace vantrel
