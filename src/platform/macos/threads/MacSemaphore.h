#pragma once

#include <dispatch/dispatch.h>

#include "platform/threads/Semaphore.h"

namespace vantrel::macos {

/// A dispatch_semaphore_t. Any thread.
class MacSemaphore final : public Semaphore {
  public:
    explicit MacSemaphore(int value);

    void signal() override;
    bool wait(double timeoutSeconds) override;

  private:
    const dispatch_semaphore_t semaphore_;
};

}  // namespace vantrel::macos
