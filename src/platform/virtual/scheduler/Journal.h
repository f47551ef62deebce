#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/scheduler/Event.h"
#include "platform/virtual/scheduler/Scheduler.h"

namespace vantrel::virtualmac {

/// Hands what happens to the sink. Any thread, without the scheduler's mutex held.
class Journal {
  public:
    using Fields = std::vector<std::pair<std::string, std::string>>;

    Journal(const Scheduler& scheduler, EventSink sink) : scheduler_(scheduler), sink_(std::move(sink)) {}

    void emit(std::string kind, std::string text = {}, Fields fields = {});

    /// Nothing is emitted from now on.
    void mute();

  private:
    const Scheduler& scheduler_;
    // A sink may look at the Mac, and what it does may be an event again.
    std::recursive_mutex mutex_;
    EventSink sink_;
    bool muted_ = false;
};

}  // namespace vantrel::virtualmac
