#pragma once

#include <string>
#include <vector>

#include "platform/desktop/Screens.h"
#include "platform/linux/x11/X11Monitors.h"

namespace vantrel::linuxdesktop {

/// The display's monitors, which may be any parts of it. The destructor restores them.
class MonitorLayout {
  public:
    MonitorLayout();
    ~MonitorLayout();
    MonitorLayout(const MonitorLayout&) = delete;
    MonitorLayout& operator=(const MonitorLayout&) = delete;

    /// The primary one first, in pixels from the top left.
    void set(const std::vector<X11Monitor>& monitors);
    /// The same in points from the bottom left of the primary one. All of them are shifted together so that they fit.
    void setScreens(const std::vector<Screen>& screens);

  private:
    /// Including mirrors.
    std::vector<X11Monitor> now();

    std::unique_ptr<X11Connection> connection_;
    const std::vector<X11Monitor> before_;
};

}  // namespace vantrel::linuxdesktop
