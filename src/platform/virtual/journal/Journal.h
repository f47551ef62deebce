#pragma once

#include <functional>
#include <mutex>
#include <utility>

#include "platform/virtual/journal/Event.h"

namespace vantrel::virtualmac {

/// Hands what happens to the sink, with the time that `uptime` tells in seconds. Any thread, without the scheduler's
/// mutex held.
class Journal {
  public:
    Journal(std::function<double()> uptime, EventSink sink) : uptime_(std::move(uptime)), sink_(std::move(sink)) {}

    void emit(Happening happening);

    /// Nothing is emitted from now on.
    void mute();

  private:
    const std::function<double()> uptime_;
    // A sink may look at the Mac, and what it does may be an event again.
    std::recursive_mutex mutex_;
    EventSink sink_;
    bool muted_ = false;
};

}  // namespace vantrel::virtualmac
