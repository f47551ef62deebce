#pragma once

#include "platform/system/CaptureAuthorization.h"

namespace vantrel::linuxdesktop {

/// A Linux desktop does not restrict an application's use of the microphone and camera.
class LinuxCaptureAuthorization final : public CaptureAuthorization {
  public:
    AuthorizationStatus status(MediaType) const override { return AuthorizationStatus::authorized; }
    void requestAccess(MediaType, std::function<void(bool granted)> completion) override { completion(true); }
};

}  // namespace vantrel::linuxdesktop
