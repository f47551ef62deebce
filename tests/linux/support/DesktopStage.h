#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

#include "platform/linux/LinuxComputer.h"

namespace vantrel::linuxdesktop {

/// Qt insists on the process's first thread. That thread runs one desktop after another here, for tests that live on a
/// second one.
class DesktopStage {
  public:
    static DesktopStage& shared();

    /// First thread: serves until the tests, run on a thread of their own, have ended; their result.
    int serve(const std::function<int()>& tests);

    /// Test thread: a new desktop with its event loop running; null without a display.
    LinuxComputer* raise();
    /// Test thread: ends the desktop and waits until it has gone.
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
