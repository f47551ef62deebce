#include "platform/virtual/scheduler/SerialExecutor.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

void SerialExecutor::start() {
    thread_ = scheduler_.start(rank_, 0, [this] { run(); });
}

void SerialExecutor::at(Moment moment, Block block) {
    const Moment now = scheduler_.now();
    scheduler_.change([&] { queue_.push(std::max(moment, now), std::move(block)); });
}

void SerialExecutor::after(double seconds, Block block) {
    at(later(scheduler_.now(), seconds), std::move(block));
}

void SerialExecutor::stop() {
    scheduler_.change([this] { stopping_ = true; });
}

void SerialExecutor::join() {
    if (thread_.joinable()) thread_.join();
}

std::size_t SerialExecutor::pending() const {
    return scheduler_.locked([this] { return queue_.size(); });
}

void SerialExecutor::run() {
    const auto due = [this] { return Due::at(stopping_ ? 0 : queue_.head()); };
    for (;;) {
        scheduler_.wait(due, Scheduler::Wait::idle);
        const Moment now = scheduler_.now();
        auto block = scheduler_.locked([this, now] { return stopping_ ? std::nullopt : queue_.take(now); });
        if (block) {
            (*block)();
        } else if (scheduler_.locked([this] { return stopping_; })) {
            break;
        }
    }
    // A block's objects may submit more blocks when destroyed.
    while (auto block = scheduler_.locked([this] { return queue_.take(never); })) block.reset();
}

}  // namespace vantrel::virtualmac
