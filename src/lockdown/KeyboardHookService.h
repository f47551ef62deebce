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
/// disabled stays so.
class KeyboardHookService : public std::enable_shared_from_this<KeyboardHookService> {
  public:
    KeyboardHookService(AccessibilityTrust& trust, KeyboardTaps& taps, Log& log)
        : trust_(trust), taps_(taps), log_(log) {}

    /// Hears the name of every blocked combination. Main thread.
    std::function<void(const std::string& name)> onKeyBlocked;

    bool isActive() const { return isActive_; }

    /// Without the Accessibility permission, or when the system refuses the tap, it stays inactive and says so in the
    /// log.
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
