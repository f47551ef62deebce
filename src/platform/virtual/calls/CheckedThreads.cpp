#include "platform/virtual/calls/CheckedThreads.h"

#include <utility>

namespace vantrel::virtualmac {

namespace {

class CheckedSemaphore final : public Semaphore {
  public:
    CheckedSemaphore(Engine& engine, std::shared_ptr<Semaphore> semaphore)
        : engine_(engine), semaphore_(std::move(semaphore)) {}

    void signal() override {
        engine_.platformCall();
        semaphore_->signal();
    }

    bool wait(double timeoutSeconds) override {
        engine_.platformCall();
        return semaphore_->wait(timeoutSeconds);
    }

  private:
    Engine& engine_;
    std::shared_ptr<Semaphore> semaphore_;
};

/// Its calls only count, so nothing is checked. A group knows the queues of its own computer only.
class GroupOfCheckedQueues final : public DispatchGroup {
  public:
    explicit GroupOfCheckedQueues(std::shared_ptr<DispatchGroup> group) : group_(std::move(group)) {}

    void enter() override { group_->enter(); }
    void leave() override { group_->leave(); }
    void notify(DispatchQueue& queue, Block block) override {
        auto* const checked = dynamic_cast<CheckedQueue*>(&queue);
        group_->notify(checked == nullptr ? queue : checked->original(), std::move(block));
    }

  private:
    std::shared_ptr<DispatchGroup> group_;
};

}  // namespace

void CheckedQueue::async(Block block) {
    engine_.platformCall();
    queue_.async(std::move(block));
}

void CheckedQueue::asyncAfter(double seconds, Block block) {
    engine_.platformCall();
    queue_.asyncAfter(seconds, std::move(block));
}

std::shared_ptr<Semaphore> CheckedDispatch::makeSemaphore(int value) {
    return std::make_shared<CheckedSemaphore>(engine_, dispatch_.makeSemaphore(value));
}

std::shared_ptr<DispatchGroup> CheckedDispatch::makeGroup() {
    return std::make_shared<GroupOfCheckedQueues>(dispatch_.makeGroup());
}

std::unique_ptr<Timer> CheckedRunLoop::scheduledTimer(double intervalSeconds, bool repeats, Block block) {
    engine_.mainThreadCall("RunLoop.scheduledTimer");
    return runLoop_.scheduledTimer(intervalSeconds, repeats, std::move(block));
}

double CheckedClock::uptime() const {
    engine_.platformCall();
    return clock_.uptime();
}

double CheckedClock::secondsSince1970() const {
    engine_.platformCall();
    return clock_.secondsSince1970();
}

}  // namespace vantrel::virtualmac
