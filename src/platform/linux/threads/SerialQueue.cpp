#include "platform/linux/threads/SerialQueue.h"

#include <utility>

namespace vantrel::linuxdesktop {

SerialQueue::SerialQueue() : thread_([this] { run(); }) {}

SerialQueue::~SerialQueue() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void SerialQueue::async(Block block) {
    {
        const std::lock_guard lock(mutex_);
        blocks_.push_back(std::move(block));
    }
    changed_.notify_one();
}

void SerialQueue::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return stopping_ || !blocks_.empty(); });
        if (blocks_.empty()) return;
        Block block = std::move(blocks_.front());
        blocks_.pop_front();
        lock.unlock();
        block();
        block = nullptr;
        lock.lock();
    }
}

}  // namespace vantrel::linuxdesktop
