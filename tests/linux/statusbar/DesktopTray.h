#pragma once

#include <memory>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// A tray on a desktop that has none: the owner of the selection is the tray. Removed with this object, as if a panel
/// crashed.
class DesktopTray {
  public:
    DesktopTray();

  private:
    const std::unique_ptr<X11Connection> panel_;
};

}  // namespace vantrel::linuxdesktop
