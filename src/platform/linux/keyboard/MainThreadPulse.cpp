#include "platform/linux/keyboard/MainThreadPulse.h"

namespace vantrel::linuxdesktop {

void MainThreadPulse::ask(Time now) {
    if (asked_ && !*answered_) return;
    asked_ = now;
    *answered_ = false;
    post_([answered = answered_] { *answered = true; });
}

bool MainThreadPulse::isOverdue(Time now) {
    if (!asked_) return false;
    if (*answered_) {
        asked_.reset();
        return false;
    }
    return now - *asked_ >= patience;
}

std::optional<MainThreadPulse::Time> MainThreadPulse::due() const {
    if (!asked_) return std::nullopt;
    return *asked_ + patience;
}

}  // namespace vantrel::linuxdesktop
