#include "platform/linux/guard/process/KernelDeadline.h"

#include <csignal>

namespace vantrel::linuxdesktop {

std::unique_ptr<KernelDeadline> KernelDeadline::create() {
    sigevent end{};
    end.sigev_notify = SIGEV_SIGNAL;
    end.sigev_signo = SIGKILL;
    timer_t timer{};
    if (timer_create(CLOCK_MONOTONIC, &end, &timer) != 0) return nullptr;
    return std::unique_ptr<KernelDeadline>(new KernelDeadline(timer));
}

KernelDeadline::~KernelDeadline() {
    timer_delete(timer_);
}

void KernelDeadline::comeBackWithin(std::chrono::milliseconds time) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    itimerspec due{};
    due.it_value.tv_sec = seconds.count();
    due.it_value.tv_nsec = std::chrono::nanoseconds(time - seconds).count();
    timer_settime(timer_, 0, &due, nullptr);
}

}  // namespace vantrel::linuxdesktop
