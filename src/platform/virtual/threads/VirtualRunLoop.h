#pragma once

#include "platform/threads/RunLoop.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The main run loop, as the client sees it.
class VirtualRunLoop final : public RunLoop {
  public:
    explicit VirtualRunLoop(Engine& engine) : engine_(engine) {}

    [[nodiscard]] std::unique_ptr<Timer> scheduledTimer(double intervalSeconds, bool repeats, Block block) override;

  private:
    Engine& engine_;
};

}  // namespace vantrel::virtualmac
