#pragma once

#include <atomic>
#include <functional>

#include "platform/system/AccessibilityTrust.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Whether the client is trusted with Accessibility. Initially it is.
class VirtualAccessibilityTrust final : public AccessibilityTrust {
  public:
    explicit VirtualAccessibilityTrust(Engine& engine) : engine_(engine) {}

    bool isProcessTrusted() const override { return trusted_; }

    bool isProcessTrustedWithPrompt() override {
        if (trusted_) return true;
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
    bool isTrusted() const { return trusted_; }
    int prompts() const { return prompts_; }

    /// Set once, before the Mac starts. Called when the permission has been withdrawn.
    std::function<void()> onRevoked;

  private:
    Engine& engine_;
    std::atomic<bool> trusted_ = true;
    std::atomic<int> prompts_ = 0;
};

}  // namespace vantrel::virtualmac
