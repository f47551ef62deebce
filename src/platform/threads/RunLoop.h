#pragma once

#include <memory>

#include "platform/threads/Block.h"

namespace vantrel {

/// A timer of the main run loop (NSTimer). Destroying the handle, on any thread, invalidates the timer.
class Timer {
  public:
    virtual ~Timer() = default;

    /// The block is not called again. Any thread; idempotent. Does not wait for a call that is already running. A timer
    /// may be invalidated or destroyed inside its own block.
    virtual void invalidate() = 0;
};

/// The main run loop (NSRunLoop). Timers are scheduled in its default mode: they stop while a modal alert is shown or a
/// menu is tracked. A repeating timer that is late fires once and keeps its grid. Main thread.
class RunLoop {
  public:
    virtual ~RunLoop() = default;

    /// +[NSTimer scheduledTimerWithTimeInterval:repeats:block:], with the interval in seconds of uptime. The block runs
    /// on the main thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> scheduledTimer(double intervalSeconds, bool repeats, Block block) = 0;
};

}  // namespace vantrel
