#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>

#include "platform/linux/x11/AskedProperty.h"

namespace vantrel::linuxdesktop {

/// The window manager's desktops, counted from 0. Changes are requests, which the window manager carries out in order
/// within some 20 ms. Any thread.
class X11Desktops {
  public:
    explicit X11Desktops(X11Connection& connection) : connection_(connection) {}

    /// Both are empty if the window manager has no desktops.
    std::optional<std::uint32_t> count();
    std::optional<std::uint32_t> current();
    /// The current one, for asking other things before its number is read.
    [[nodiscard]] AskedProperty askCurrent();

    /// Asks for this number of desktops and waits for it, a fifth of a second at most. False if that was not enough.
    bool setCount(std::uint32_t count);

    /// Like switchTo, but waits for the change as setCount does. After that, the window manager has placed every window
    /// that was shown before.
    bool goTo(std::uint32_t desktop);
    void switchTo(std::uint32_t desktop);
    void move(xcb_window_t window, std::uint32_t desktop);

  private:
    X11Connection& connection_;
};

}  // namespace vantrel::linuxdesktop
