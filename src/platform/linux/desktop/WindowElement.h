#pragma once

#include <xcb/xproto.h>

#include <optional>

#include "platform/linux/desktop/LinuxAccessibility.h"
#include "platform/linux/x11/X11WindowFacts.h"

namespace vantrel::linuxdesktop {

/// A window. "AXFullScreen", "AXPosition" and "AXSize" can be read and written, "AXCloseButton" and "AXTitle" read; a
/// title is a value of a type that is not used here. Position and size are those of the frame, in points from the top
/// left of the primary display. Writing them ends a window's maximisation and does nothing to a full-screen window; the
/// window manager may follow them only roughly. Every call fails with "invalid element" once the window is gone.
class WindowElement final : public AccessibilityElement {
  public:
    WindowElement(const AccessibilityDependencies& dependencies, xcb_window_t window, ProcessIdentifier owner)
        : dependencies_(dependencies), window_(window), owner_(owner) {}

    std::variant<AccessibilityValue, AccessibilityError> attribute(std::string_view name) const override;
    /// Success means that the window manager was asked for something that it supports.
    AccessibilityError setAttribute(std::string_view name, const AccessibilityValue& value) override;
    AccessibilityError performAction(std::string_view name) override;

  private:
    std::optional<X11WindowFacts> facts() const;
    X11WindowFacts unmaximized(const X11WindowFacts& facts);
    AccessibilityError setFullScreen(const X11WindowFacts& facts, const AccessibilityValue& value);
    AccessibilityError setPosition(const X11WindowFacts& facts, const AccessibilityValue& value);
    AccessibilityError setSize(const X11WindowFacts& facts, const AccessibilityValue& value);

    const AccessibilityDependencies dependencies_;
    const xcb_window_t window_;
    const ProcessIdentifier owner_;
};

}  // namespace vantrel::linuxdesktop
