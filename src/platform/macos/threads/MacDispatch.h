#pragma once

#include <dispatch/dispatch.h>

#include "platform/threads/Dispatch.h"
#include "platform/threads/DispatchGroup.h"
#include "platform/threads/DispatchQueue.h"
#include "platform/threads/Semaphore.h"

namespace vantrel::macos {

/// `seconds` of uptime from now, rounded up. Any thread.
dispatch_time_t timeFromNow(double seconds);

/// A queue of Grand Central Dispatch. Any thread.
class MacDispatchQueue final : public DispatchQueue {
  public:
    explicit MacDispatchQueue(dispatch_queue_t queue) : queue_(queue) {}

    void async(Block block) override;
    void asyncAfter(double seconds, Block block) override;

    dispatch_queue_t get() const { return queue_; }

  private:
    const dispatch_queue_t queue_;
};

/// A dispatch_group_t. The system ends the process if a group is destroyed with work under way, so everyone who enters
/// it keeps it alive.
class MacDispatchGroup final : public DispatchGroup {
  public:
    MacDispatchGroup() : group_(dispatch_group_create()) {}

    void enter() override;
    void leave() override;
    /// The queue must be one of this computer.
    void notify(DispatchQueue& queue, Block block) override;

  private:
    const dispatch_group_t group_;
};

/// A dispatch_semaphore_t. Any thread.
class MacSemaphore final : public Semaphore {
  public:
    explicit MacSemaphore(int value);

    void signal() override;
    bool wait(double timeoutSeconds) override;

  private:
    const dispatch_semaphore_t semaphore_;
};

class MacDispatch final : public Dispatch {
  public:
    MacDispatch();

    DispatchQueue& mainQueue() override;
    DispatchQueue& userInitiatedQueue() override;
    std::shared_ptr<Semaphore> makeSemaphore(int value) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;

  private:
    MacDispatchQueue mainQueue_;
    MacDispatchQueue userInitiatedQueue_;
};

}  // namespace vantrel::macos
