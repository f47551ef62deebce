#include "platform/virtual/scheduler/Workers.h"

#include <utility>

namespace vantrel::virtualmac {

Workers::~Workers() {
    join();
}

void Workers::join() {
    const std::lock_guard guard(mutex_);
    for (auto& worker : workers_) worker.thread.join();
    workers_.clear();
}

void Workers::runAt(Moment moment, Block block) {
    auto ended = std::make_shared<std::atomic<bool>>(false);
    const std::lock_guard guard(mutex_);
    std::erase_if(workers_, [](Worker& worker) {
        if (!worker.ended->load()) return false;
        worker.thread.join();
        return true;
    });
    auto body = [ended, block = std::move(block)]() mutable {
        block();
        block = nullptr;
        ended->store(true);
    };
    workers_.push_back({ended, scheduler_.start(Scheduler::Rank::worker, moment, std::move(body))});
}

}  // namespace vantrel::virtualmac
