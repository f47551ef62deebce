#include "platform/linux/threads/LinuxSemaphore.h"

#include <chrono>

#include "platform/linux/threads/Duration.h"

namespace vantrel::linuxdesktop {

void LinuxSemaphore::signal() {
    const std::lock_guard lock(mutex_);
    ++value_;
    // Under the lock: the waiting thread may destroy the semaphore as soon as the lock is free.
    signalled_.notify_one();
}

bool LinuxSemaphore::wait(double timeoutSeconds) {
    const auto deadline = std::chrono::steady_clock::now() + steadyDuration(timeoutSeconds);
    std::unique_lock lock(mutex_);
    if (!signalled_.wait_until(lock, deadline, [this] { return value_ > 0; })) return false;
    --value_;
    return true;
}

}  // namespace vantrel::linuxdesktop
