#pragma once

#include "platform/threads/Semaphore.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// A semaphore whose waits take virtual time.
class VirtualSemaphore final : public Semaphore {
  public:
    VirtualSemaphore(Engine& engine, int value) : engine_(engine), value_(value) {}

    void signal() override;
    /// False at once if the calling thread holds a vantrel::Lock, which is misuse.
    bool wait(double timeoutSeconds) override;

  private:
    Engine& engine_;
    /// Guarded by the scheduler's mutex.
    int value_;
};

}  // namespace vantrel::virtualmac
