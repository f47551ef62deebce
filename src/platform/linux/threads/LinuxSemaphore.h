#pragma once

#include <condition_variable>
#include <mutex>

#include "platform/threads/Semaphore.h"

namespace vantrel::linuxdesktop {

/// A counting semaphore on the steady clock. Any thread.
class LinuxSemaphore final : public Semaphore {
  public:
    explicit LinuxSemaphore(int value) : value_(value) {}

    void signal() override;
    bool wait(double timeoutSeconds) override;

  private:
    std::mutex mutex_;
    std::condition_variable signalled_;
    int value_;
};

}  // namespace vantrel::linuxdesktop
