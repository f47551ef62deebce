#pragma once

#include <cstddef>

#include "platform/system/CaptureAuthorization.h"

namespace vantrel::contracts {

/// A computer under test whose permissions can be set, and whose prompts the test answers. Test thread.
class PermissionHost {
  public:
    virtual ~PermissionHost() = default;

    virtual void setTrusted(bool trusted) = 0;
    /// How often the system has asked for Accessibility.
    virtual int trustPrompts() = 0;

    virtual void setCaptureStatus(MediaType media, AuthorizationStatus status) = 0;
    /// The prompts for microphone and camera on the screen.
    virtual std::size_t capturePrompts() = 0;
    /// Answers the oldest one.
    virtual void answerCapturePrompt(bool granted) = 0;
};

}  // namespace vantrel::contracts
