#include "platform/linux/threads/BackgroundQueue.h"

#include <cstdlib>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/linux/threads/DelayedWork.h"
#include "platform/portable/StandardError.h"

namespace vantrel::linuxdesktop {

BackgroundQueue::BackgroundQueue(DelayedWork& delayedWork) : delayedWork_(delayedWork) {}

BackgroundQueue::~BackgroundQueue() {
    waitUntilIdle();
}

void BackgroundQueue::async(Block block) {
    {
        const std::lock_guard lock(mutex_);
        ++running_;
    }
    try {
        std::thread([this, block = std::move(block)]() mutable {
            block();
            block = nullptr;
            const std::lock_guard lock(mutex_);
            --running_;
            // Under the lock: the waiting destructor may destroy the condition as soon as the lock is free.
            ended_.notify_all();
        }).detach();
    } catch (const std::system_error& error) {
        sayOnStandardError(std::string("vantrel: no thread for background work: ") + error.what() + "\n");
        std::abort();
    }
}

void BackgroundQueue::asyncAfter(double seconds, Block block) {
    delayedWork_.after(seconds, [this, block = std::move(block)]() mutable { async(std::move(block)); });
}

void BackgroundQueue::waitUntilIdle() {
    std::unique_lock lock(mutex_);
    ended_.wait(lock, [this] { return running_ == 0; });
}

}  // namespace vantrel::linuxdesktop
