#pragma once

#include <optional>
#include <vector>

#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

/// Facts about many windows in the time of one: every request is sent before the first answer is awaited. A window that
/// disappears meanwhile is left out. Any thread.
class X11WindowSurvey {
  public:
    X11WindowSurvey(X11Connection& connection, X11Windows& windows) : connection_(connection), windows_(windows) {}

    /// The managed windows of all desktops, front to back. Empty optional if the X server is gone.
    std::optional<std::vector<X11WindowFacts>> frontToBack();

    /// The ordinary windows of a process, front to back.
    std::vector<X11WindowFacts> ofProcess(ProcessIdentifier process);

    /// Empty if the window is gone.
    std::optional<X11WindowFacts> of(xcb_window_t window);

  private:
    std::vector<X11WindowFacts> of(const std::vector<xcb_window_t>& windows);

    X11Connection& connection_;
    X11Windows& windows_;
};

}  // namespace vantrel::linuxdesktop
