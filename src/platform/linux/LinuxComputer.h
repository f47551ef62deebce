#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "platform/Computer.h"

namespace vantrel::linuxdesktop {

/// Why there is no computer, or none that a class can be held on.
enum class NoComputer { noX11Display, wayland, relativeHome, noWindowManager, noFullScreen, losesFullScreen };

/// A Linux X11 desktop. Created and destroyed on the main thread, one at a time in a process. The destructor waits for
/// background blocks that still run.
class LinuxComputer {
  public:
    /// Connects to the X11 display that DISPLAY names. If there is none, or it belongs to a Wayland compositor, the
    /// result is null and `reason` says why. So it is if HOME is a relative path, which would be
    /// another folder for each process that is started.
    ///
    /// `endProcess` is called when the application has been allowed to terminate, and does not return. Without it,
    /// Application::run() returns. Sets the process's environment for its libraries and ignores SIGPIPE and
    /// SIGXFSZ.
    static std::unique_ptr<LinuxComputer> create(Block endProcess, NoComputer& reason);
    ~LinuxComputer();

    Computer computer();

    /// Without a window manager, or with one that has or keeps no full screen, the computer works but holds nobody on a
    /// meeting. Empty if all is there.
    std::optional<NoComputer> whyNoClassCanBegin();

    /// Runs the block as an event of the main thread. Any thread.
    void postEvent(Block event);

    /// The number of main run loop timers that will still fire. Main thread.
    std::size_t timerCount() const;

  private:
    struct Parts;

    explicit LinuxComputer(std::unique_ptr<Parts> parts);

    const std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::linuxdesktop
