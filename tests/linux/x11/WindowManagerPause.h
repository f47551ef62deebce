#pragma once

#include <sys/types.h>

#include <thread>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Stops the display's window manager for a while, as on a busy computer. It then finds all requests of that time at
/// once.
class WindowManagerPause {
  public:
    WindowManagerPause(X11Connection& connection, double seconds);
    /// Waits until it continues.
    ~WindowManagerPause();
    WindowManagerPause(const WindowManagerPause&) = delete;
    WindowManagerPause& operator=(const WindowManagerPause&) = delete;

  private:
    const pid_t process_;
    std::thread resuming_;
};

}  // namespace vantrel::linuxdesktop
