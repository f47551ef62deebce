#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

#include "platform/linux/LinuxComputer.h"

namespace vantrel::linuxdesktop {

/// Qt needs the process's first thread. So that thread runs one desktop after another, and the tests run on a second
/// one.
class DesktopStage {
  public:
    static DesktopStage& shared();

    /// First thread: serves until the tests, run on their own thread, have ended. Returns their result.
    int serve(const std::function<int()>& tests);

    /// Test thread: a new desktop with its event loop running. Null without a display.
    LinuxComputer* raise();
    /// Test thread: ends the desktop and waits until it is gone.
    void lower();

  private:
    enum class State { idle, raising, running, ended };

    void runDesktop(std::unique_lock<std::mutex>& lock);

    std::mutex mutex_;
    std::condition_variable changed_;
    State state_ = State::idle;
    std::unique_ptr<LinuxComputer> desktop_;
};

}  // namespace vantrel::linuxdesktop
