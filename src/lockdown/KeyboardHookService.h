#pragma once

#include <functional>
#include <string>

namespace vantrel {

/// Swallows the key combinations that would leave the meeting. Main thread. The tap is still to come: start does
/// nothing, so the hook never becomes active.
class KeyboardHookService {
  public:
    /// Hears the name of every blocked combination. Main thread.
    std::function<void(const std::string& name)> onKeyBlocked;

    bool isActive() const { return isActive_; }

    void start();
    void stop();

  private:
    bool isActive_ = false;
};

}  // namespace vantrel
