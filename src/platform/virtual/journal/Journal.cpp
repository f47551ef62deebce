#include "platform/virtual/journal/Journal.h"

namespace vantrel::virtualmac {

void Journal::emit(Happening happening) {
    const std::lock_guard guard(mutex_);
    if (muted_ || !sink_) return;
    sink_(Event{std::move(happening), uptime_()});
}

void Journal::mute() {
    const std::lock_guard guard(mutex_);
    muted_ = true;
}

}  // namespace vantrel::virtualmac
