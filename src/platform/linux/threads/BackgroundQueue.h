#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

#include "platform/threads/DispatchQueue.h"

namespace vantrel::linuxdesktop {

class DelayedWork;

/// The global concurrent queue. Every block has its own thread: the client has few blocks, and they sleep and wait for
/// seconds at a time. The destructor waits for running blocks. A process that must end at once uses std::_Exit instead.
class BackgroundQueue final : public DispatchQueue {
  public:
    explicit BackgroundQueue(DelayedWork& delayedWork);
    ~BackgroundQueue() override;

    void async(Block block) override;
    void asyncAfter(double seconds, Block block) override;

    /// Waits until no block is running.
    void waitUntilIdle();

  private:
    DelayedWork& delayedWork_;
    std::mutex mutex_;
    std::condition_variable ended_;
    std::size_t running_ = 0;
};

}  // namespace vantrel::linuxdesktop
