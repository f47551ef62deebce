#include "platform/linux/system/WaylandSigns.h"

#include <algorithm>

namespace vantrel::linuxdesktop {

bool WaylandSigns::showWayland() const {
    const bool output = std::any_of(outputs.begin(), outputs.end(),
                                    [](const std::string& name) { return name.rfind("XWAYLAND", 0) == 0; });
    return extension || output || (sessionType == "wayland" && !waylandDisplay.empty());
}

}  // namespace vantrel::linuxdesktop
