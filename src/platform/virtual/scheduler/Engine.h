#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/virtual/journal/Journal.h"
#include "platform/virtual/scheduler/MainRunLoop.h"
#include "platform/virtual/scheduler/Options.h"
#include "platform/virtual/scheduler/Scheduler.h"
#include "platform/virtual/scheduler/SerialExecutor.h"
#include "platform/virtual/scheduler/Workers.h"

namespace vantrel::virtualmac {

/// What every part of the virtual Mac works with: the time, the threads and the journal. Parts guard what they hold by
/// a mutex of their own, which is never held across a wait, an event or a call-back.
class Engine {
  public:
    explicit Engine(const Options& options);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void start();
    /// Driver: lets every thread end. Whatever still waits is let go. False when a thread goes on nonetheless.
    bool stop();
    /// Driver, after stop(): joins the threads, and aborts when one goes on.
    void join();

    /// To be called first in a platform call: a moment at which other threads may go on. Calls that only compute or
    /// count (JSON, URLs, texts, dates, dispatch groups) and the end of a timer do without.
    void platformCall() { scheduler.yield(); }
    /// The same for what belongs to the main thread. Elsewhere it is misuse, and the call goes on nonetheless.
    void mainThreadCall(std::string_view what);
    /// Alerts and menus are numbered as they open: the one with the highest number lies in front.
    std::uint64_t nextInFront() { return ++opened_; }
    bool isMainThread() const { return scheduler.callersRank() == Scheduler::Rank::main; }

    void misuse(const std::string& what) const;

    /// The process is over: nothing of it is heard or sent any more. A real one would not get so far, so that what its
    /// threads still ask of the Mac has no effect.
    void endProcess();
    bool isOver() const { return mainLoop.isOver(); }

  private:
    const std::function<void(const std::string&)> onMisuse_;
    std::atomic<std::uint64_t> opened_ = 0;

  public:
    Scheduler scheduler;
    Journal journal;
    MainRunLoop mainLoop;
    /// What the world and the participant do, apart from the client's threads.
    SerialExecutor world;
    SerialExecutor urlSession;
    Workers workers;
};

}  // namespace vantrel::virtualmac
