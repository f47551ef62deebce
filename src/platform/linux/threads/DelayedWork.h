#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// Runs blocks later, on a thread of its own. Blocks must be short: they pass work on to the right thread. Any thread.
/// Blocks that still wait when this object is destroyed are dropped.
class DelayedWork {
  public:
    DelayedWork();
    ~DelayedWork();
    DelayedWork(const DelayedWork&) = delete;
    DelayedWork& operator=(const DelayedWork&) = delete;

    /// `seconds` of uptime from now. Blocks for the same moment keep their order.
    void after(double seconds, Block block);

  private:
    using Moment = std::chrono::steady_clock::time_point;

    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<Moment, Block> waiting_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
