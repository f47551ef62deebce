#pragma once

#include "platform/system/CaptureAuthorization.h"

namespace vantrel::macos {

class MacCaptureAuthorization final : public CaptureAuthorization {
  public:
    AuthorizationStatus status(MediaType media) const override;
    void requestAccess(MediaType media, std::function<void(bool granted)> completion) override;
};

}  // namespace vantrel::macos
