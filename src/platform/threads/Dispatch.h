#pragma once

#include <memory>

#include "platform/threads/DispatchGroup.h"
#include "platform/threads/DispatchQueue.h"
#include "platform/threads/Semaphore.h"

namespace vantrel {

/// Grand Central Dispatch: its queues, and the objects that it creates. Any thread.
class Dispatch {
  public:
    virtual ~Dispatch() = default;

    /// dispatch_get_main_queue.
    virtual DispatchQueue& mainQueue() = 0;

    /// The global concurrent queue of quality of service user-initiated.
    virtual DispatchQueue& userInitiatedQueue() = 0;

    virtual std::shared_ptr<Semaphore> makeSemaphore(int value) = 0;
    virtual std::shared_ptr<DispatchGroup> makeGroup() = 0;
};

}  // namespace vantrel
