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

#include "platform/virtual/scheduler/ChoiceSource.h"
#include "platform/virtual/scheduler/Due.h"
#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// Owns the virtual time. Its threads are real, but exactly one of them runs at a time, the one that holds the baton.
/// It passes the baton on where it waits, yields or ends. When no thread can run, the clock jumps to the next due
/// moment. A seed replays a run exactly; other seeds try other orders of what is due at the same moment.
///
/// The driver is a thread outside the scheduler: a test or a rehearsal. It holds the baton outside its waits, and gets
/// it back last, after everything due at its moment has run. There is one driver thread at a time.
///
/// In the free-running mode there is no baton: every ready thread runs at once, and the clock jumps only when no thread
/// runs, including the driver. It is for ThreadSanitizer, from which the baton would hide races.
class Scheduler {
  public:
    /// Seed 0 chooses in this order, then by age.
    enum class Rank { world, main, urlSession, worker, driver };

    /// idle: waiting for work that may never come. blocked: in the middle of something, so that an endless wait is a
    /// deadlock.
    enum class Wait { idle, blocked };

    struct Options {
        std::uint64_t seed = 0;
        bool freeRunning = false;
        /// Called on misuse, on the faulty thread, without the mutex held.
        std::function<void(const std::string&)> onMisuse;
        /// Instead of the seed, if it is set.
        std::shared_ptr<ChoiceSource> choices = nullptr;
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

    /// The same for a change of what due functions read: wakes the threads that have become ready.
    template <class Function>
    auto change(Function function) {
        const Change guard(*this);
        return function();
    }

    /// Starts a thread that runs from `notBefore` on. Join it only after it has ended (see isAlone).
    std::thread start(Rank rank, Moment notBefore, std::function<void()> body);

    /// Blocks the calling thread until it is due. False if it was released without being due: because nothing can ever
    /// happen any more, or because it holds a vantrel::Lock. Both are misuse unless the wait is idle.
    bool wait(DueFunction due, Wait kind);

    /// Driver only: blocks until only repeating timers are left. False if `limitSeconds` of uptime pass first.
    bool waitUntilIdle(double limitSeconds);

    /// Driver only: blocks until it is due. False if only repeating timers are left before that.
    bool waitUnlessIdle(DueFunction due);

    /// Passes the baton on by the seed; the caller counts as ready. Does nothing for the driver, for seed 0, under a
    /// vantrel::Lock and in the free-running mode.
    void yield();

    /// The calling thread stops for ever where it is, with everything that it owns, and counts as ended. What it refers
    /// to, the scheduler too, must then live until the program ends.
    [[noreturn]] void halt();

    /// Chooses one of `count` equals by the seed; for seed 0 the first. With the mutex held.
    std::size_t choose(std::size_t count);

    /// The rank of the calling thread.
    Rank callersRank() const;

    /// Whether the driver is the only thread left.
    bool isAlone() const;
    /// The number of threads of that rank that have not ended.
    std::size_t count(Rank rank) const;

    /// Releases every blocked thread that would wait for ever. True if there was one.
    bool releaseStuck();

    /// From now on deadlocks are not misuse: a Mac that is ending may have stuck threads.
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

    /// Holds the mutex. The destructor wakes the threads that have become ready.
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
    void pass(std::unique_lock<std::mutex>& lock, Record& self) { pass(lock, self, next()); }
    void pass(std::unique_lock<std::mutex>& lock, Record& self, Record& next);
    void offerInterruption(Record& self);
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
    /// By rank, then by age. Without the driver.
    std::vector<std::shared_ptr<Record>> records_;
};

}  // namespace vantrel::virtualmac
