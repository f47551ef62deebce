#pragma once

#include <xcb/xproto.h>

#include "platform/linux/desktop/LinuxAccessibility.h"

namespace vantrel::linuxdesktop {

/// A window's close button. "AXPress" asks the window to close; the window may refuse or show a question.
class CloseButtonElement final : public AccessibilityElement {
  public:
    CloseButtonElement(const AccessibilityDependencies& dependencies, xcb_window_t window, ProcessIdentifier owner)
        : dependencies_(dependencies), window_(window), owner_(owner) {}

    std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const override;
    AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) override;
    AccessibilityError performAction(std::string_view name) override;

  private:
    bool isGone() const;

    const AccessibilityDependencies dependencies_;
    const xcb_window_t window_;
    const ProcessIdentifier owner_;
};

}  // namespace vantrel::linuxdesktop
