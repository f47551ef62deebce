#pragma once

#include <functional>
#include <mutex>
#include <utility>

#include "platform/virtual/journal/Event.h"

namespace vantrel::virtualmac {

/// Passes events to the sink, with the time from `uptime` in seconds. Any thread, without the scheduler's mutex held.
class Journal {
  public:
    Journal(std::function<double()> uptime, EventSink sink) : uptime_(std::move(uptime)), sink_(std::move(sink)) {}

    void emit(Happening happening);

    /// From now on no event is emitted.
    void mute();

  private:
    const std::function<double()> uptime_;
    // Recursive: a sink may look at the Mac, and that may cause another event.
    std::recursive_mutex mutex_;
    EventSink sink_;
    bool muted_ = false;
};

}  // namespace vantrel::virtualmac
