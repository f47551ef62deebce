#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <memory>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/macos/bridge/CFReference.h"

namespace vantrel::macos {

/// An event tap with its source in the main run loop's common modes. Its callback runs there, so decisions and reports
/// are made on the main thread. Created and destroyed there too; its own report may destroy it.
class MacKeyboardTap final : public KeyboardTap {
  public:
    /// Null if the system refuses.
    static std::unique_ptr<MacKeyboardTap> create(KeyDecision decision, KeyReport report);
    ~MacKeyboardTap() override;

  private:
    struct Rules {
        KeyDecision decision;
        std::shared_ptr<const KeyReport> report;
    };

    explicit MacKeyboardTap(std::unique_ptr<const Rules> rules) : rules_(std::move(rules)) {}

    bool install();
    static CGEventRef handle(CGEventTapProxy proxy, CGEventType type, CGEventRef event, void* userInfo);

    // The tap keeps only its address and does not own it.
    const std::unique_ptr<const Rules> rules_;
    CFReference<CFMachPortRef> eventTap_;
    CFReference<CFRunLoopSourceRef> runLoopSource_;
};

class MacKeyboardTaps final : public KeyboardTaps {
  public:
    [[nodiscard]] std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;
};

}  // namespace vantrel::macos
