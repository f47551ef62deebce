#include "platform/linux/threads/MainQueue.h"

#include <utility>

#include "platform/linux/threads/DelayedWork.h"
#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

MainQueue::MainQueue(MainThread& mainThread, DelayedWork& delayedWork)
    : mainThread_(mainThread), delayedWork_(delayedWork) {}

void MainQueue::async(Block block) {
    const std::lock_guard lock(mutex_);
    blocks_.push_back(std::move(block));
    wake();
}

void MainQueue::asyncAfter(double seconds, Block block) {
    delayedWork_.after(seconds, [this, block = std::move(block)]() mutable { async(std::move(block)); });
}

// Runs with the mutex held. Posts one event at a time, so that many blocks do not become many events.
void MainQueue::wake() {
    if (awake_ || running_ || blocks_.empty()) return;
    awake_ = true;
    mainThread_.post([this] { runNext(); });
}

void MainQueue::runNext() {
    std::unique_lock lock(mutex_);
    awake_ = false;
    if (running_ || blocks_.empty()) return;
    Block block = std::move(blocks_.front());
    blocks_.pop_front();
    running_ = true;
    lock.unlock();

    block();
    block = nullptr;

    lock.lock();
    running_ = false;
    wake();
}

}  // namespace vantrel::linuxdesktop
