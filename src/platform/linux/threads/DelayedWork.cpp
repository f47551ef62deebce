#include "platform/linux/threads/DelayedWork.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

#include "platform/linux/threads/Duration.h"

namespace vantrel::linuxdesktop {

namespace {

FileDescriptor makeAlarm() {
    FileDescriptor alarm(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
    if (!alarm.isOpen()) throw std::system_error(errno, std::generic_category(), "timerfd_create");
    return alarm;
}

}  // namespace

DelayedWork::DelayedWork() : alarm_(makeAlarm()), thread_([this] { run(); }) {}

DelayedWork::~DelayedWork() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        wakeAt(std::chrono::steady_clock::now());
    }
    thread_.join();
}

// The thread sleeps on: only the kernel hears of an earlier moment.
void DelayedWork::after(double seconds, Block block) {
    const Moment moment = std::chrono::steady_clock::now() + steadyDuration(seconds);
    const std::lock_guard lock(mutex_);
    const auto added = waiting_.emplace(moment, std::move(block));
    if (added == waiting_.begin()) wakeAt(moment);
}

void DelayedWork::run() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        if (waiting_.empty() || std::chrono::steady_clock::now() < waiting_.begin()->first) {
            if (!waiting_.empty()) wakeAt(waiting_.begin()->first);
            lock.unlock();
            std::uint64_t expirations = 0;
            [[maybe_unused]] const ssize_t count = read(alarm_.get(), &expirations, sizeof expirations);
            lock.lock();
            continue;
        }
        Block block = std::move(waiting_.begin()->second);
        waiting_.erase(waiting_.begin());
        lock.unlock();
        block();
        block = nullptr;
        lock.lock();
    }
}

void DelayedWork::wakeAt(Moment moment) const {
    const auto sinceStart = moment.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceStart);
    itimerspec due{};
    due.it_value.tv_sec = seconds.count();
    due.it_value.tv_nsec = std::chrono::nanoseconds(sinceStart - seconds).count();
    timerfd_settime(alarm_.get(), TFD_TIMER_ABSTIME, &due, nullptr);
}

}  // namespace vantrel::linuxdesktop
