#pragma once

#include <cstddef>
#include <memory>

#include "platform/Computer.h"

namespace vantrel::linuxdesktop {

/// Why there is no computer to be had.
enum class NoComputer { noX11Display, wayland };

/// A Linux X11 desktop. Made and destroyed on the main thread, one at a time in a process. The destructor waits for
/// background blocks that still run.
class LinuxComputer {
  public:
    /// Looks for the X11 display that DISPLAY names. Where there is none, or a Wayland compositor stands behind it,
    /// the result is null and `reason` says why.
    ///
    /// `endProcess` is called when the application has been allowed to terminate and does not return; without it
    /// Application::run() returns. Sets the process's environment for Qt and ignores SIGPIPE.
    static std::unique_ptr<LinuxComputer> create(Block endProcess, NoComputer& reason);
    ~LinuxComputer();

    Computer computer();

    /// Runs the block as an event of the main thread. Any thread.
    void postEvent(Block event);

    /// How many timers of the main run loop are still to fire. Main thread.
    std::size_t timerCount() const;

  private:
    struct Parts;

    explicit LinuxComputer(std::unique_ptr<Parts> parts);

    const std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::linuxdesktop
