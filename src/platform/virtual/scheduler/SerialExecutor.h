#pragma once

#include <cstddef>
#include <thread>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Scheduler.h"
#include "platform/virtual/scheduler/TimedQueue.h"

namespace vantrel::virtualmac {

/// A thread of its own that runs blocks one after another, by the moment at which they are due.
class SerialExecutor {
  public:
    SerialExecutor(Scheduler& scheduler, Scheduler::Rank rank) : scheduler_(scheduler), rank_(rank) {}
    /// stop() and the thread's end come first.
    ~SerialExecutor() = default;
    SerialExecutor(const SerialExecutor&) = delete;
    SerialExecutor& operator=(const SerialExecutor&) = delete;

    void start();
    /// Any thread. A past moment means now.
    void at(Moment moment, Block block);
    void after(double seconds, Block block);

    /// The thread ends after the block that it is running; those that are left are dropped on it.
    void stop();
    void join();

    std::size_t pending() const;

  private:
    void run();

    Scheduler& scheduler_;
    Scheduler::Rank rank_;
    TimedQueue queue_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::virtualmac
