#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// The signs that the X server runs inside a Wayland compositor, where it sees only its own clients.
struct WaylandSigns {
    /// The extension XWAYLAND, which Xwayland has from 23.1 on.
    bool extension = false;
    /// RandR's outputs. Before 23.1 Xwayland calls its own XWAYLAND0 and so on.
    std::vector<std::string> outputs;
    /// XDG_SESSION_TYPE and WAYLAND_DISPLAY, empty when they are not set.
    std::string sessionType;
    std::string waylandDisplay;

    bool showWayland() const;
};

}  // namespace vantrel::linuxdesktop
