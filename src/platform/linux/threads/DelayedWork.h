#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// Hands blocks on at a later moment, from a thread of its own. Blocks are short: they move work to where it belongs.
/// Any thread. What is still waiting when this object dies is dropped.
class DelayedWork {
  public:
    DelayedWork();
    ~DelayedWork();
    DelayedWork(const DelayedWork&) = delete;
    DelayedWork& operator=(const DelayedWork&) = delete;

    /// `seconds` of uptime from now. Blocks of equal moments keep their order.
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
