#include "platform/virtual/scheduler/NotificationCenter.h"

#include <algorithm>
#include <utility>

namespace vantrel::virtualmac {

struct NotificationCenter::Observer {
    Block block;
};

class NotificationCenter::Handle final : public Observation {
  public:
    explicit Handle(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

  private:
    std::shared_ptr<Observer> observer_;
};

std::unique_ptr<Observation> NotificationCenter::observe(Block block) {
    auto observer = std::make_shared<Observer>(Observer{std::move(block)});
    const std::lock_guard guard(mutex_);
    observers_.push_back(observer);
    return std::make_unique<Handle>(std::move(observer));
}

void NotificationCenter::post() {
    std::vector<std::weak_ptr<Observer>> told;
    {
        const std::lock_guard guard(mutex_);
        std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        told = observers_;
    }
    for (auto& observer : told) {
        engine_.mainLoop.async(engine_.scheduler.now(), [observer = std::move(observer)] {
            if (const auto living = observer.lock()) living->block();
        });
    }
}

std::size_t NotificationCenter::observers() const {
    const std::lock_guard guard(mutex_);
    return static_cast<std::size_t>(
        std::count_if(observers_.begin(), observers_.end(), [](const auto& observer) { return !observer.expired(); }));
}

}  // namespace vantrel::virtualmac
