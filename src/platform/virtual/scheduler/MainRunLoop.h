#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <thread>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Scheduler.h"
#include "platform/virtual/scheduler/TimedQueue.h"
#include "platform/virtual/scheduler/TimerTable.h"

namespace vantrel::virtualmac {

/// The main thread and what it runs: events, the blocks of the main queue, timers. Among those it takes what was due
/// first, and the seed decides among what is due at the same moment. Timers run in the standard mode only. The main
/// queue is not re-entrant: while one of its blocks is on the stack no other one runs.
class MainRunLoop {
  public:
    /// NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode.
    enum class Mode { standard, modal, tracking };

    explicit MainRunLoop(Scheduler& scheduler) : scheduler_(scheduler) {}
    MainRunLoop(const MainRunLoop&) = delete;
    MainRunLoop& operator=(const MainRunLoop&) = delete;
    /// stop() and join() come first.
    ~MainRunLoop() = default;

    void start();
    /// Every loop returns as soon as what it runs has returned; blocks and timers that are left are dropped on the main
    /// thread, which then ends.
    void stop();
    void join();

    /// The process is over: every loop returns, and what is left or still comes is dropped unrun.
    void endProcess();
    bool isOver() const;

    /// What the user or the system does to the application. Any thread.
    void postEvent(Block block);
    /// The main queue. Any thread.
    void async(Moment moment, Block block);

    /// Any thread, like invalidate().
    TimerTable::State addTimer(double intervalSeconds, bool repeats, Block block);
    void invalidate(TimerState& state);

    /// Main thread: runs what comes until `done`, which is asked between two pieces of work, until the process
    /// is over, or at once when the caller holds a vantrel::Lock, which is misuse.
    void run(Mode mode, const std::function<bool()>& done);

    std::size_t timers() const;
    /// Events and main-queue blocks that have not run.
    std::size_t pending() const;

  private:
    Due due(Mode mode) const;
    /// What runs next; null when nothing is due.
    std::function<void()> take(Mode mode);
    void live();
    void dropEverything();

    Scheduler& scheduler_;
    TimedQueue events_;
    TimedQueue mainQueue_;
    TimerTable timers_;
    bool mainQueueIsBusy_ = false;
    bool over_ = false;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::virtualmac
