#pragma once

#import <Foundation/Foundation.h>

#include <atomic>
#include <memory>

#include "platform/threads/RunLoop.h"

namespace vantrel::macos {

/// An NSTimer of the main run loop. The block belongs to the NSTimer alone and is let go of on the main thread. Made on
/// the main thread.
class MacTimer final : public Timer {
  public:
    MacTimer(double intervalSeconds, bool repeats, Block block);
    ~MacTimer() override;

    void invalidate() override;

  private:
    const std::shared_ptr<std::atomic<bool>> valid_;
    NSTimer* const timer_;
};

}  // namespace vantrel::macos
