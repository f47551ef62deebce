#pragma once

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/threads/Block.h"
#include "platform/virtual/scheduler/Scheduler.h"

namespace vantrel::virtualmac {

/// A thread for every block: the global queue, and handlers that run on any thread.
class Workers {
  public:
    explicit Workers(Scheduler& scheduler) : scheduler_(scheduler) {}
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    /// All of them must have ended.
    ~Workers();
    void join();

    /// Any thread.
    void run(Block block) { runAt(0, std::move(block)); }
    void runAt(Moment moment, Block block);

  private:
    struct Worker {
        std::shared_ptr<std::atomic<bool>> ended;
        std::thread thread;
    };

    Scheduler& scheduler_;
    std::mutex mutex_;
    std::list<Worker> workers_;
};

}  // namespace vantrel::virtualmac
