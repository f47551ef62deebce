#pragma once

#include <sys/types.h>

#include <thread>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Holds the display's window manager still for a while, as a busy computer does: what is asked of it meanwhile it
/// finds all at once.
class WindowManagerPause {
  public:
    WindowManagerPause(X11Connection& connection, double seconds);
    /// Waits until it goes on.
    ~WindowManagerPause();
    WindowManagerPause(const WindowManagerPause&) = delete;
    WindowManagerPause& operator=(const WindowManagerPause&) = delete;

  private:
    const pid_t process_;
    std::thread resuming_;
};

}  // namespace vantrel::linuxdesktop
