#pragma once

namespace vantrel {

/// What the launcher tells of a meeting window in full screen. Main thread.
class FullscreenObserver {
  public:
    virtual ~FullscreenObserver() = default;

    virtual void setFullscreenConfirmed(bool confirmed) = 0;
};

}  // namespace vantrel
