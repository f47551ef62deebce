#include "platform/linux/threads/DelayedWork.h"

#include <utility>

#include "platform/linux/threads/Duration.h"

namespace vantrel::linuxdesktop {

DelayedWork::DelayedWork() : thread_([this] { run(); }) {}

DelayedWork::~DelayedWork() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void DelayedWork::after(double seconds, Block block) {
    const Moment moment = std::chrono::steady_clock::now() + steadyDuration(seconds);
    {
        const std::lock_guard lock(mutex_);
        waiting_.emplace(moment, std::move(block));
    }
    changed_.notify_one();
}

void DelayedWork::run() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        if (waiting_.empty()) {
            changed_.wait(lock);
            continue;
        }
        const auto first = waiting_.begin();
        const Moment due = first->first;
        if (std::chrono::steady_clock::now() < due) {
            changed_.wait_until(lock, due);
            continue;
        }
        Block block = std::move(first->second);
        waiting_.erase(first);
        lock.unlock();
        block();
        block = nullptr;
        lock.lock();
    }
}

}  // namespace vantrel::linuxdesktop
