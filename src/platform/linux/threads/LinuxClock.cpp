#include "platform/linux/threads/LinuxClock.h"

#include <time.h>

namespace vantrel::linuxdesktop {

namespace {

double readClock(clockid_t clock) {
    timespec moment{};
    clock_gettime(clock, &moment);
    return static_cast<double>(moment.tv_sec) + static_cast<double>(moment.tv_nsec) / 1e9;
}

}  // namespace

double LinuxClock::uptime() const {
    return readClock(CLOCK_MONOTONIC);
}

double LinuxClock::secondsSince1970() const {
    return readClock(CLOCK_REALTIME);
}

}  // namespace vantrel::linuxdesktop
