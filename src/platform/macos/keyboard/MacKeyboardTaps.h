#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <memory>
#include <utility>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/macos/bridge/CFReference.h"
#include "platform/macos/desktop/AccessibilityLoss.h"

namespace vantrel::macos {

/// An event tap with its source in the main run loop's common modes. Its callback runs there, so decisions and reports
/// are made on the main thread. Created and destroyed there too; its own report may destroy it. It leaves the system as
/// soon as the client knows that it has lost the Accessibility permission: a tap that stays can hold up all input.
class MacKeyboardTap final : public KeyboardTap {
  public:
    /// Null if the system refuses.
    static std::unique_ptr<MacKeyboardTap> create(KeyDecision decision, KeyReport report);
    ~MacKeyboardTap() override;

  private:
    struct Rules {
        KeyDecision decision;
        std::shared_ptr<const KeyReport> report;
        MacKeyboardTap* tap = nullptr;
    };

    explicit MacKeyboardTap(Rules rules)
        : rules_(std::make_unique<const Rules>(Rules{rules.decision, std::move(rules.report), this})) {}

    bool install();
    void disabled(CGEventType type);
    void leave(const char* why);
    /// Once: a tap that is lost stays so.
    void sayThatItIsLost(const char* why);
    void remove();
    static CGEventRef handle(CGEventTapProxy proxy, CGEventType type, CGEventRef event, void* userInfo);

    // The tap keeps only its address and does not own it.
    const std::unique_ptr<const Rules> rules_;
    CFReference<CFMachPortRef> eventTap_;
    CFReference<CFRunLoopSourceRef> runLoopSource_;
    // As long as the tap stands.
    std::unique_ptr<const AccessibilityLoss> loss_;
    bool isSaid_ = false;
};

class MacKeyboardTaps final : public KeyboardTaps {
  public:
    [[nodiscard]] std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;
};

}  // namespace vantrel::macos
