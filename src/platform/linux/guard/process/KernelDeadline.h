#pragma once

#include <chrono>
#include <ctime>
#include <memory>

namespace vantrel::linuxdesktop {

/// Has the kernel end this process unless it comes back in time, even while it is stopped. One thread at a time.
class KernelDeadline {
  public:
    /// Null if the kernel has no timer to give.
    static std::unique_ptr<KernelDeadline> create();
    ~KernelDeadline();
    KernelDeadline(const KernelDeadline&) = delete;
    KernelDeadline& operator=(const KernelDeadline&) = delete;

    /// The process ends after this time, unless it is called again before.
    void comeBackWithin(std::chrono::milliseconds time);

  private:
    explicit KernelDeadline(timer_t timer) : timer_(timer) {}

    const timer_t timer_;
};

}  // namespace vantrel::linuxdesktop
