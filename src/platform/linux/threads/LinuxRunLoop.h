#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/threads/RunLoop.h"

namespace vantrel::linuxdesktop {

class DelayedWork;
class MainThread;
class RunLoopModes;

/// Timers of the main run loop's default mode. Due times are kept here on the uptime clock; the delayed work only wakes
/// the main thread. Main thread, except where the handles allow more.
class LinuxRunLoop final : public RunLoop {
  public:
    LinuxRunLoop(MainThread& mainThread, DelayedWork& delayedWork, RunLoopModes& modes);
    ~LinuxRunLoop() override;

    [[nodiscard]] std::unique_ptr<Timer> scheduledTimer(double intervalSeconds, bool repeats, Block block) override;

    /// The number of timers that will still fire.
    std::size_t timerCount() const;

  private:
    struct ScheduledTimer;
    class Handle;

    void fireDue();
    void fire(ScheduledTimer& timer);
    void removeInvalid();
    void arm();

    MainThread& mainThread_;
    DelayedWork& delayedWork_;
    RunLoopModes& modes_;
    std::vector<std::shared_ptr<ScheduledTimer>> timers_;
    double armedFor_;
};

}  // namespace vantrel::linuxdesktop
