#pragma once

#include <atomic>
#include <functional>

#include "platform/system/AccessibilityTrust.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Whether the client is trusted with Accessibility. Initially it is. A system may go on calling a client trusted whose
/// entry was deleted, and refuse its calls.
class VirtualAccessibilityTrust final : public AccessibilityTrust {
  public:
    explicit VirtualAccessibilityTrust(Engine& engine) : engine_(engine) {}

    bool isProcessTrusted() const override { return trusted_ || hides_; }

    bool isProcessTrustedWithPrompt() override {
        if (isProcessTrusted()) return true;
        if (engine_.isOver()) return false;
        ++prompts_;
        engine_.journal.emit({PermissionEvent::accessibilityPrompt});
        return false;
    }

    /// Driver-facing, any thread.
    void setTrusted(bool trusted) {
        const bool before = trusted_.exchange(trusted);
        if (before && !trusted && onRevoked) onRevoked();
    }
    /// Whether what is asked with the permission is done, whatever the system says.
    bool isTrusted() const { return trusted_; }
    /// Whether the system hides it when the permission goes.
    void setHiding(bool hides) { hides_ = hides; }
    int prompts() const { return prompts_; }

    /// Set once, before the Mac starts. Called when the permission has been withdrawn.
    std::function<void()> onRevoked;

  private:
    Engine& engine_;
    std::atomic<bool> trusted_ = true;
    std::atomic<bool> hides_ = false;
    std::atomic<int> prompts_ = 0;
};

}  // namespace vantrel::virtualmac
