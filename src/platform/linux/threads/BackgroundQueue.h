#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

#include "platform/threads/DispatchQueue.h"

namespace vantrel::linuxdesktop {

class DelayedWork;

/// The global concurrent queue. Every block has a thread of its own, because blocks of the client sleep and wait for
/// seconds at a time and there are few of them. The destructor waits for those that run; a process that must end at
/// once leaves through std::_Exit instead.
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
