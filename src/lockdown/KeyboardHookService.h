#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/system/AccessibilityTrust.h"
#include "platform/system/Log.h"

namespace vantrel {

/// Swallows the key combinations that would leave the meeting. Main thread; always shared. A tap that the system has
/// disabled stays disabled.
class KeyboardHookService : public std::enable_shared_from_this<KeyboardHookService> {
  public:
    KeyboardHookService(AccessibilityTrust& trust, KeyboardTaps& taps, Log& log)
        : trust_(trust), taps_(taps), log_(log) {}

    /// Called with the name of every blocked combination. Main thread.
    std::function<void(const std::string& name)> onKeyBlocked;

    bool isActive() const { return isActive_; }

    /// Without the Accessibility permission, or if the system refuses the tap, the service stays inactive and logs
    /// that.
    void start();
    void stop();

  private:
    void handleBlocked(std::string_view name);

    AccessibilityTrust& trust_;
    KeyboardTaps& taps_;
    Log& log_;

    std::unique_ptr<KeyboardTap> eventTap_;
    bool isActive_ = false;
};

}  // namespace vantrel
