#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>

namespace vantrel::linuxdesktop {

class X11Connection;

/// The window manager's desktops, counted from 0. Changes are requests that it follows within some 20 ms, one after
/// the other. Any thread.
class X11Desktops {
  public:
    explicit X11Desktops(X11Connection& connection) : connection_(connection) {}

    /// Both are empty where the window manager has no desktops.
    std::optional<std::uint32_t> count();
    std::optional<std::uint32_t> current();

    /// Asks for so many desktops and waits until there are, a fifth of a second at most; false when there are not.
    bool setCount(std::uint32_t count);

    /// The same as switchTo, and waits until it is so, just as long: by then the window manager has placed every window
    /// that came up before.
    bool goTo(std::uint32_t desktop);
    void switchTo(std::uint32_t desktop);
    void move(xcb_window_t window, std::uint32_t desktop);

  private:
    X11Connection& connection_;
};

}  // namespace vantrel::linuxdesktop
