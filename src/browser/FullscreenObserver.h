#pragma once

namespace vantrel {

/// Told by the launcher about the meeting window's full screen. Main thread.
class FullscreenObserver {
  public:
    virtual ~FullscreenObserver() = default;

    virtual void setFullscreenConfirmed(bool confirmed) = 0;
};

}  // namespace vantrel
