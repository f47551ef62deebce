#include "platform/linux/keyboard/MainThreadPulse.h"

namespace vantrel::linuxdesktop {

void MainThreadPulse::ask(Time now) {
    if (asked_ && !*answered_) return;
    asked_ = now;
    waitedBefore_ = waited_();
    waitedSince_ = {};
    *answered_ = false;
    post_([answered = answered_] { *answered = true; });
}

bool MainThreadPulse::isOverdue(Time now) {
    if (!asked_) return false;
    if (*answered_) {
        asked_.reset();
        return false;
    }
    const auto took = now - *asked_;
    if (took < patience + waitedSince_) return false;
    waitedSince_ = waited_() - waitedBefore_;
    return took >= patience + waitedSince_;
}

std::optional<MainThreadPulse::Time> MainThreadPulse::due() const {
    if (!asked_) return std::nullopt;
    return *asked_ + patience + std::chrono::duration_cast<Time::duration>(waitedSince_);
}

}  // namespace vantrel::linuxdesktop
