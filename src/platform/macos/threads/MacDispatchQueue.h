#pragma once

#include <dispatch/dispatch.h>

#include "platform/threads/DispatchQueue.h"

namespace vantrel::macos {

/// A queue of Grand Central Dispatch. Any thread.
class MacDispatchQueue final : public DispatchQueue {
  public:
    explicit MacDispatchQueue(dispatch_queue_t queue) : queue_(queue) {}

    void async(Block block) override;
    void asyncAfter(double seconds, Block block) override;

    dispatch_queue_t get() const { return queue_; }

  private:
    const dispatch_queue_t queue_;
};

}  // namespace vantrel::macos
