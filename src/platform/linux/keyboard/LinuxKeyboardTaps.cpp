#include "platform/linux/keyboard/LinuxKeyboardTaps.h"

#include <sys/eventfd.h>

#include <system_error>
#include <utility>

#include "platform/linux/keyboard/KeyboardFilter.h"
#include "platform/linux/keyboard/LinuxKeyboardTap.h"

namespace vantrel::linuxdesktop {

LinuxKeyboardTaps::LinuxKeyboardTaps(MainThread& mainThread, std::string guardExecutable)
    : mainThread_(mainThread), guardExecutable_(std::move(guardExecutable)) {}

// The guard is started before the grab: keys wait from the grab until the thread's first answer.
std::unique_ptr<KeyboardTap> LinuxKeyboardTaps::create(KeyDecision decision, KeyReport report) {
    LinuxKeyboardTap::Dependencies dependencies;
    dependencies.filter = KeyboardFilter::open();
    if (!dependencies.filter) return nullptr;
    dependencies.guardExecutable = guardExecutable_;
    dependencies.guard = GuardProcess::start(guardExecutable_, dependencies.filter->resource());
    if (!dependencies.guard || !dependencies.guard->waitUntilReady()) return nullptr;
    dependencies.stop = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!dependencies.stop.isOpen() || !dependencies.filter->grab()) return nullptr;
    try {
        return std::make_unique<LinuxKeyboardTap>(std::move(dependencies), mainThread_, decision, std::move(report));
    } catch (const std::system_error&) {
        return nullptr;  // No thread is available.
    }
}

}  // namespace vantrel::linuxdesktop
