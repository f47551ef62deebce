#pragma once

#include <cstddef>
#include <thread>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Scheduler.h"
#include "platform/virtual/scheduler/TimedQueue.h"

namespace vantrel::virtualmac {

/// A thread that runs blocks one after another, in the order in which they are due.
class SerialExecutor {
  public:
    SerialExecutor(Scheduler& scheduler, Scheduler::Rank rank) : scheduler_(scheduler), rank_(rank) {}
    /// Call stop() and wait for the thread's end before.
    ~SerialExecutor() = default;
    SerialExecutor(const SerialExecutor&) = delete;
    SerialExecutor& operator=(const SerialExecutor&) = delete;

    void start();
    /// Any thread. A past moment means now.
    void at(Moment moment, Block block);
    void after(double seconds, Block block);

    /// The thread ends after its current block. The remaining ones are dropped on it.
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
