#pragma once

#include <deque>
#include <mutex>

#include "platform/threads/DispatchQueue.h"

namespace vantrel::linuxdesktop {

class DelayedWork;
class MainThread;

/// The main queue. One block runs in each turn of Qt's event loop, so that input is handled in between. While a block
/// is on the stack no other one starts, even in a nested loop that the block opened. A turn that found the queue busy
/// is made up for when the block returns.
class MainQueue final : public DispatchQueue {
  public:
    MainQueue(MainThread& mainThread, DelayedWork& delayedWork);

    void async(Block block) override;
    void asyncAfter(double seconds, Block block) override;

  private:
    void runNext();
    void wake();

    MainThread& mainThread_;
    DelayedWork& delayedWork_;
    std::mutex mutex_;
    std::deque<Block> blocks_;
    bool awake_ = false;
    bool running_ = false;
};

}  // namespace vantrel::linuxdesktop
