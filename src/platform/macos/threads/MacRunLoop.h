#pragma once

#import <Foundation/Foundation.h>

#include <atomic>
#include <memory>

#include "platform/threads/RunLoop.h"

namespace vantrel::macos {

/// While one exists, it tells the system that the process works for the user even if none of its windows is visible.
/// Otherwise App Nap delays timers, in the end by minutes. The Mac may still go to sleep. Meanwhile the main thread is
/// watched (MainThreadWatch). Any thread.
class TimelyActivity {
  public:
    TimelyActivity();
    ~TimelyActivity();
    TimelyActivity(const TimelyActivity&) = delete;
    TimelyActivity& operator=(const TimelyActivity&) = delete;

  private:
    id<NSObject> token_;
};

/// An NSTimer of the main run loop. Only the NSTimer owns the block, which is destroyed on the main thread. Created on
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

/// NSTimers in the default mode of the main run loop. Main thread.
class MacRunLoop final : public RunLoop {
  public:
    [[nodiscard]] std::unique_ptr<Timer> scheduledTimer(double intervalSeconds, bool repeats, Block block) override;
};

}  // namespace vantrel::macos
