#pragma once

#include "platform/threads/Threads.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Sleeps in virtual time. Under a vantrel::Lock it is misuse and returns at once.
class VirtualThreads final : public Threads {
  public:
    explicit VirtualThreads(Engine& engine) : engine_(engine) {}

    bool isMainThread() const override { return engine_.isMainThread(); }
    void sleep(double seconds) override;

  private:
    Engine& engine_;
};

}  // namespace vantrel::virtualmac
