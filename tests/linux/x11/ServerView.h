#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// The X server's own view of the screen, independent of the client. One thread.
class ServerView {
  public:
    struct Child {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::string name;
        X11Rectangle frame;
        bool viewable = false;
    };

    ServerView() : connection_(X11Connection::open()) {}

    /// The root's children that are visible when mapped, back to front.
    std::vector<Child> children();
    /// The children with that name.
    std::vector<Child> named(const std::string& name);

    /// The window visible at that pixel. Its name is empty if it is a window manager's frame.
    std::optional<Child> topmostAt(int x, int y);

    /// Red, green and blue in the lower bits, as the screen shows them, row by row.
    std::vector<std::uint32_t> pixels(const X11Rectangle& place);
    std::uint32_t pixel(int x, int y);

    xcb_window_t focusedWindow();

    X11Connection& connection() { return *connection_; }

  private:
    const std::unique_ptr<X11Connection> connection_;
};

}  // namespace vantrel::linuxdesktop
