#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The observers of one notification, called on the main operation queue. Any thread.
class NotificationCenter {
  public:
    explicit NotificationCenter(Engine& engine) : engine_(engine) {}

    [[nodiscard]] std::unique_ptr<Observation> observe(Block block);
    /// Observers that are gone when their turn comes are not called.
    void post();

    std::size_t observers() const;

  private:
    struct Observer;
    class Handle;

    Engine& engine_;
    mutable std::mutex mutex_;
    std::vector<std::weak_ptr<Observer>> observers_;
};

}  // namespace vantrel::virtualmac
