#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Scheduler.h"
#include "platform/virtual/scheduler/TimedQueue.h"
#include "platform/virtual/scheduler/TimerTable.h"

namespace vantrel::virtualmac {

/// The main thread and its work: events, the blocks of the main queue, timers. It runs first what was due first; for
/// the same moment the seed decides. Timers run in the standard mode only, but for
/// those that are added for every mode. The main queue is not re-entrant: while one
/// of its blocks is on the stack no other one runs.
class MainRunLoop {
  public:
    /// NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode.
    enum class Mode { standard, modal, tracking };

    explicit MainRunLoop(Scheduler& scheduler) : scheduler_(scheduler) {}
    MainRunLoop(const MainRunLoop&) = delete;
    MainRunLoop& operator=(const MainRunLoop&) = delete;
    /// Call stop() and join() before.
    ~MainRunLoop() = default;

    void start();
    /// Every loop returns as soon as its current work has returned. Remaining blocks and timers are dropped on the main
    /// thread, which then ends.
    void stop();
    void join();

    /// The process is over: every loop returns. Remaining and new work is dropped without running.
    void endProcess();
    bool isOver() const;

    /// Main thread: ends the process as exit() does, without returning. No destructor of what is on the stack runs, and
    /// remaining work is not even dropped. Such a loop cannot be destroyed.
    [[noreturn]] void exitProcess();
    bool hasExited() const;

    /// An action of the user or the system on the application. Any thread.
    void postEvent(Block block);
    /// Work that a platform over this Mac posts for itself. It runs as an event, but before all other work of every
    /// thread, so that it changes no choice of the seed. Any thread.
    void postOwn(Block block);
    /// The main queue. Any thread.
    void async(Moment moment, Block block);

    /// Any thread, like invalidate().
    TimerTable::State addTimer(double intervalSeconds, bool repeats, Block block) {
        return addTimer(intervalSeconds, repeats, false, std::move(block));
    }
    /// A timer that fires under alerts and menus, too: a platform's own. Of what is due at its moment it comes first,
    /// so that it changes no choice of the seed.
    TimerTable::State addTimerInEveryMode(double intervalSeconds, bool repeats, Block block) {
        return addTimer(intervalSeconds, repeats, true, std::move(block));
    }
    void invalidate(TimerState& state);

    /// Main thread: runs work until `done`, which is checked after each piece of work, or until the process is over.
    /// Returns at once if the caller holds a vantrel::Lock, which is misuse.
    void run(Mode mode, const std::function<bool()>& done);

    /// Without those that fire in every mode.
    std::size_t timers() const;
    /// The number of events and main-queue blocks that have not run.
    std::size_t pending() const;

  private:
    TimerTable::State addTimer(double intervalSeconds, bool repeats, bool inEveryMode, Block block);
    TimerTable& tableOf(const TimerState& state) { return state.inEveryMode ? timersInEveryMode_ : timers_; }
    Due due(Mode mode) const;
    /// The next work to run. Null if nothing is due.
    std::function<void()> take(Mode mode);
    void live();
    void dropEverything();

    Scheduler& scheduler_;
    TimedQueue own_;
    TimedQueue events_;
    TimedQueue mainQueue_;
    TimerTable timers_;
    TimerTable timersInEveryMode_;
    bool mainQueueIsBusy_ = false;
    bool over_ = false;
    bool exited_ = false;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::virtualmac
