#pragma once

#include "platform/threads/RunLoop.h"

namespace vantrel::macos {

/// NSTimers in the default mode of the main run loop. Main thread.
class MacRunLoop final : public RunLoop {
  public:
    [[nodiscard]] std::unique_ptr<Timer> scheduledTimer(double intervalSeconds, bool repeats, Block block) override;
};

}  // namespace vantrel::macos
