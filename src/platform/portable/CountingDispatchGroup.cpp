#include "platform/portable/CountingDispatchGroup.h"

#include <cstdio>
#include <cstdlib>

namespace vantrel {

void CountingDispatchGroup::enter() {
    const std::lock_guard guard(mutex_);
    ++entered_;
}

void CountingDispatchGroup::leave() {
    Waiting ready;
    {
        const std::lock_guard guard(mutex_);
        if (entered_ == 0) {
            std::fputs("DispatchGroup: leave without enter\n", stderr);
            std::abort();
        }
        if (--entered_ > 0) return;
        ready.swap(waiting_);
    }
    for (auto& [queue, block] : ready) queue->async(std::move(block));
}

void CountingDispatchGroup::notify(DispatchQueue& queue, Block block) {
    {
        const std::lock_guard guard(mutex_);
        if (entered_ > 0) {
            waiting_.emplace_back(&queue, std::move(block));
            return;
        }
    }
    queue.async(std::move(block));
}

}  // namespace vantrel
