#include "platform/virtual/threads/VirtualSemaphore.h"

namespace vantrel::virtualmac {

void VirtualSemaphore::signal() {
    engine_.scheduler.change([this] { ++value_; });
}

bool VirtualSemaphore::wait(double timeoutSeconds) {
    Scheduler& scheduler = engine_.scheduler;
    const Moment deadline = later(scheduler.now(), timeoutSeconds);
    const auto due = [this, deadline] { return Due::at(value_ > 0 ? 0 : deadline); };
    for (;;) {
        const bool going = scheduler.wait(due, Scheduler::Wait::blocked);
        const bool taken = scheduler.locked([this] {
            if (value_ <= 0) return false;
            --value_;
            return true;
        });
        if (taken) return true;
        if (!going || scheduler.now() >= deadline) return false;
    }
}

}  // namespace vantrel::virtualmac
