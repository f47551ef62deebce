#include "platform/linux/guard/GuardSource.h"

#include <QTimer>

#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

namespace {

// Also under alerts and menus, whose event loops run Qt's timers.
void beat(const std::weak_ptr<Guards>& running) {
    const auto guards = running.lock();
    if (!guards) return;
    guards->beat();
    QTimer::singleShot(mainThreadBeat, [running] { beat(running); });
}

}  // namespace

std::shared_ptr<Guards> GuardSource::guards() {
    const std::lock_guard lock(mutex_);
    if (auto running = running_.lock()) return running;
    std::shared_ptr<Guards> started = Guards::start(executable_);
    running_ = started;
    if (started) mainThread_.post([running = running_] { beat(running); });
    return started;
}

}  // namespace vantrel::linuxdesktop
