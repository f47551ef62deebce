#include "platform/virtual/journal/Journal.h"

namespace vantrel::virtualmac {

void Journal::emit(std::string kind, std::string text, Fields fields) {
    const std::lock_guard guard(mutex_);
    if (muted_ || !sink_) return;
    sink_(Event{uptime_(), std::move(kind), std::move(text), std::move(fields)});
}

void Journal::mute() {
    const std::lock_guard guard(mutex_);
    muted_ = true;
}

}  // namespace vantrel::virtualmac
