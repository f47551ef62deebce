#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <thread>

#include "platform/linux/system/FileDescriptor.h"
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
    void wakeAt(Moment moment) const;

    // A timer of the kernel. Unlike a condition variable it takes a new moment without waking the thread.
    const FileDescriptor alarm_;
    std::mutex mutex_;
    std::multimap<Moment, Block> waiting_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
