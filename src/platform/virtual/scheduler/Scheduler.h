#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/virtual/scheduler/Due.h"
#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// Owns the virtual time. Its threads are real, but exactly one of them holds the baton and runs; it is passed on where
/// a thread waits, yields or ends. When nobody can run, the clock jumps to the next due moment. One seed replays a run
/// exactly; other seeds explore other orders of what is due at the same moment.
///
/// The driver is whoever is not a thread of the scheduler: a test, a rehearsal. It holds the baton outside of its waits
/// and gets it back last, after everything that is due at its moment has run. There is one driver thread at a time.
///
/// In the free-running mode there is no baton: whoever is ready runs at once, and the clock jumps only when no thread
/// runs, the driver included. It serves ThreadSanitizer, which the baton would blind.
class Scheduler {
  public:
    /// Seed 0 chooses in this order, then by age.
    enum class Rank { world, main, urlSession, worker, driver };

    /// idle: waiting for work that may never come; blocked: in the middle of something, so that a wait without an end
    /// is a deadlock.
    enum class Wait { idle, blocked };

    struct Options {
        std::uint64_t seed = 0;
        bool freeRunning = false;
        /// Hears of wrong use, on the thread at fault, without the mutex held.
        std::function<void(const std::string&)> onMisuse;
    };

    explicit Scheduler(Options options);
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    ~Scheduler() = default;

    Moment now() const;

    /// Runs `function` with the mutex held that guards what due functions read.
    template <class Function>
    auto locked(Function function) const {
        const std::lock_guard guard(mutex_);
        return function();
    }

    /// The same for a change of what due functions read: threads that have become ready are told.
    template <class Function>
    auto change(Function function) {
        const Change guard(*this);
        return function();
    }

    /// Starts a thread that runs from `notBefore` on. It is joined only after it has ended (see isAlone).
    std::thread start(Rank rank, Moment notBefore, std::function<void()> body);

    /// Blocks the calling thread until it is due. False when it was let go without being due: nothing can ever happen
    /// any more, or it holds a vantrel::Lock; both are misuse unless the wait is idle.
    bool wait(DueFunction due, Wait kind);

    /// The driver only: blocks until nothing is left to run but repeating timers. False when `limitSeconds` of uptime
    /// pass first.
    bool waitUntilIdle(double limitSeconds);

    /// The driver only: blocks until it is due. False when nothing is left before that but repeating timers.
    bool waitUnlessIdle(DueFunction due);

    /// Passes the baton on by the seed; the caller counts as ready. Does nothing for the driver, for seed 0, under a
    /// vantrel::Lock and in the free-running mode.
    void yield();

    /// One of `count` equals, by the seed; the first one for seed 0. With the mutex held.
    std::size_t choose(std::size_t count);

    /// The rank of the calling thread.
    Rank callersRank() const;

    /// Whether no threads are left but the driver.
    bool isAlone() const;
    /// Threads of the rank that have not ended.
    std::size_t count(Rank rank) const;

    /// Lets every blocked thread that would wait for ever go on. True when there was one.
    bool releaseStuck();

    /// Deadlocks are not misuse any more: whoever ends may be stuck.
    void forgiveDeadlocks() { forgiving_ = true; }

  private:
    struct Record {
        const Scheduler* scheduler = nullptr;
        Rank rank = Rank::driver;
        DueFunction due;
        Wait kind = Wait::idle;
        bool waiting = false;
        bool released = false;
        bool untilIdle = false;
        std::condition_variable wake;
    };

    /// Holds the mutex and tells the ready threads at its end.
    class Change {
      public:
        explicit Change(Scheduler& scheduler) : scheduler_(scheduler), guard_(scheduler.mutex_) {}
        ~Change() { scheduler_.wakeReady(); }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

      private:
        Scheduler& scheduler_;
        std::lock_guard<std::mutex> guard_;
    };

    Record& callersRecord();
    bool isReady(const Record& record) const;
    bool isQuiet() const;
    bool mayRun(const Record& record) const;
    void wakeReady();
    void advance();
    void settle();
    Record& next();
    void pass(std::unique_lock<std::mutex>& lock, Record& self);
    void waitFreely(std::unique_lock<std::mutex>& lock, Record& self);
    bool waitRecorded(DueFunction due, Wait kind, bool untilIdle);
    void enter(Record& record);
    void leave(const Record& record);
    void misuse(const std::string& what) const;

    inline static thread_local Record* current_ = nullptr;

    const Options options_;
    std::atomic<bool> forgiving_ = false;
    mutable std::mutex mutex_;
    Moment now_ = 0;
    std::uint64_t decisions_ = 0;
    Record driver_;
    Record* baton_ = &driver_;
    /// By rank, then by age; without the driver.
    std::vector<std::shared_ptr<Record>> records_;
};

}  // namespace vantrel::virtualmac
