#pragma once

#include <map>
#include <mutex>

#include "platform/desktop/Accessibility.h"

namespace vantrel {

/// Remembers which applications did not answer a call within limitedAccessibilityTimeout. Times are seconds of uptime.
/// Any thread.
class UnansweredCalls {
  public:
    /// Whether a call to the process must fail at once.
    bool refuses(ProcessIdentifier process, double now) const {
        const std::lock_guard guard(mutex_);
        const auto found = until_.find(process);
        return found != until_.end() && now < found->second;
    }

    /// A call to the process timed out.
    void note(ProcessIdentifier process, double now) {
        const std::lock_guard guard(mutex_);
        until_.insert_or_assign(process, now + limitedAccessibilityPause);
    }

  private:
    mutable std::mutex mutex_;
    std::map<ProcessIdentifier, double> until_;
};

}  // namespace vantrel
