#pragma once

#include <optional>
#include <vector>

#include "platform/ProcessLauncher.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// The windows of all applications, through the window manager's EWMH interface. Any thread.
class X11Windows {
  public:
    explicit X11Windows(X11Connection& connection) : connection_(connection) {}

    /// The managed windows of a process, front to back.
    std::vector<xcb_window_t> ofProcess(ProcessIdentifier process);

    /// The window with the focus.
    std::optional<xcb_window_t> active();

    /// Where a window lies on the root window; empty when it is gone.
    std::optional<X11Rectangle> frame(xcb_window_t window);

    /// Brings a window to the front and gives it the focus, changing to its desktop first.
    void activate(xcb_window_t window);

    /// Asks a window to close.
    void close(xcb_window_t window);

  private:
    ProcessIdentifier owner(xcb_window_t window);

    X11Connection& connection_;
};

}  // namespace vantrel::linuxdesktop
