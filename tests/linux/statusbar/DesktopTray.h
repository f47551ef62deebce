#pragma once

#include <memory>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// A tray on a desktop that has none: whoever owns the selection is one. Goes with this object, as with a panel that
/// crashes.
class DesktopTray {
  public:
    DesktopTray();

  private:
    const std::unique_ptr<X11Connection> panel_;
};

}  // namespace vantrel::linuxdesktop
