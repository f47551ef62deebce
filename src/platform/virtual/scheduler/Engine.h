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

/// What every part of the virtual Mac needs: the time, the threads and the journal. Each part guards its state by its
/// own mutex, which is never held across a wait, an event or a callback.
class Engine {
  public:
    explicit Engine(const Options& options);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void start();
    /// Driver: lets every thread end, and releases whatever still waits. False if a thread continues anyway.
    bool stop();
    /// Driver, after stop(): joins the threads. Aborts if one continues or the main thread has stopped in exit().
    void join();
    /// The same for every thread but the main one.
    void joinOthers();

    /// A call of the client begins: other threads may run now. See CheckedComputer.
    void platformCall() { scheduler.yield(); }
    /// The same for calls that belong to the main thread. On another thread it is misuse, but the call continues.
    void mainThreadCall(std::string_view what);
    /// Alerts and menus are numbered as they open. The one with the highest number is in front.
    std::uint64_t nextInFront() { return ++opened_; }
    bool isMainThread() const { return scheduler.callersRank() == Scheduler::Rank::main; }

    void misuse(const std::string& what) const;

    /// The process is over: nothing more of it is recorded or sent. Its threads may still call the Mac, where a real
    /// process would be gone, so their calls have no effect.
    void endProcess();
    bool isOver() const { return mainLoop.isOver(); }

  private:
    const std::function<void(const std::string&)> onMisuse_;
    const std::function<void(const std::string&)> onWrongThread_;
    std::atomic<std::uint64_t> opened_ = 0;

  public:
    Scheduler scheduler;
    Journal journal;
    MainRunLoop mainLoop;
    /// Runs what the world and the participant do, outside the client's threads.
    SerialExecutor world;
    SerialExecutor urlSession;
    Workers workers;
};

}  // namespace vantrel::virtualmac
