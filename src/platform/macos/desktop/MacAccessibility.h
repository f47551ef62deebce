#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include "platform/desktop/Accessibility.h"
#include "platform/macos/bridge/CFReference.h"

namespace vantrel::macos {

/// An AXUIElement. Any thread.
class MacAccessibilityElement final : public AccessibilityElement {
  public:
    /// An empty reference stands for a missing element: every call returns an error.
    explicit MacAccessibilityElement(CFReference<AXUIElementRef> element) : element_(std::move(element)) {}

    std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const override;
    AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) override;
    AccessibilityError performAction(std::string_view name) override;

    AXUIElementRef get() const { return element_.get(); }

  private:
    const CFReference<AXUIElementRef> element_;
};

class MacAccessibility final : public Accessibility {
  public:
    std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const override;
    [[nodiscard]] std::unique_ptr<AccessibilityTimeLimit> limitTime() override;
};

}  // namespace vantrel::macos
