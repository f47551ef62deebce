#pragma once

#include <cstdint>
#include <optional>

#include "platform/linux/desktop/LinuxAccessibility.h"

namespace vantrel::linuxdesktop {

/// An application. "AXWindows" are its ordinary windows on all desktops, front to back. "AXFocusedWindow" is the one
/// with the focus, or else the front one. No attribute can be written. Every call fails with "cannot complete" once the
/// process is gone.
class ApplicationElement final : public AccessibilityElement {
  public:
    ApplicationElement(const AccessibilityDependencies& dependencies, ProcessIdentifier process);

    std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const override;
    AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) override;
    AccessibilityError performAction(std::string_view name) override;

  private:
    bool isGone() const;
    std::variant<AccessibilityValue, AccessibilityError> focusedWindow() const;

    const AccessibilityDependencies dependencies_;
    const ProcessIdentifier process_;
    const std::optional<std::uint64_t> startTime_;
};

}  // namespace vantrel::linuxdesktop
