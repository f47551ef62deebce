#include "platform/linux/threads/LinuxThreads.h"

#include <chrono>
#include <thread>

#include "platform/linux/threads/Duration.h"
#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

bool LinuxThreads::isMainThread() const {
    return mainThread_.isCurrent();
}

void LinuxThreads::sleep(double seconds) {
    std::this_thread::sleep_until(std::chrono::steady_clock::now() + steadyDuration(seconds));
}

}  // namespace vantrel::linuxdesktop
