#include "platform/linux/keyboard/LinuxKeyboardTaps.h"

#include <sys/eventfd.h>

#include <system_error>
#include <utility>

#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/keyboard/KeyboardFilter.h"
#include "platform/linux/keyboard/LinuxKeyboardTap.h"

namespace vantrel::linuxdesktop {

// The guards are started before the grab: keys wait from the grab until the thread's first answer.
std::unique_ptr<KeyboardTap> LinuxKeyboardTaps::create(KeyDecision decision, KeyReport report) {
    LinuxKeyboardTap::Dependencies dependencies;
    dependencies.filter = KeyboardFilter::open();
    if (!dependencies.filter) return nullptr;
    auto guards = guards_.guards();
    if (!guards) return nullptr;
    dependencies.guards = std::make_unique<KeyGuards>(std::move(guards), dependencies.filter->resource());
    if (!dependencies.guards->waitUntilReady()) return nullptr;
    dependencies.stop = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!dependencies.stop.isOpen() || !dependencies.filter->grab()) return nullptr;
    try {
        return std::make_unique<LinuxKeyboardTap>(std::move(dependencies), mainThread_, decision, std::move(report));
    } catch (const std::system_error&) {
        return nullptr;  // No thread is available.
    }
}

}  // namespace vantrel::linuxdesktop
