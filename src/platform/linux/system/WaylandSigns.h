#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// What tells whether the X server is a guest of a Wayland compositor, where it sees only its own clients.
struct WaylandSigns {
    /// The extension XWAYLAND, which Xwayland has since 23.1.
    bool extension = false;
    /// The outputs by RandR. Before 23.1 those of Xwayland are called XWAYLAND0 and so on.
    std::vector<std::string> outputs;
    /// XDG_SESSION_TYPE and WAYLAND_DISPLAY, empty when they are not set.
    std::string sessionType;
    std::string waylandDisplay;

    bool showWayland() const;
};

}  // namespace vantrel::linuxdesktop
