#include "platform/macos/threads/MacClock.h"

#include <time.h>

namespace vantrel::macos {

namespace {

constexpr double nanosecondsPerSecond = 1e9;

}  // namespace

// mach_absolute_time in nanoseconds. CLOCK_MONOTONIC would continue while the Mac sleeps.
double MacClock::uptime() const {
    return static_cast<double>(clock_gettime_nsec_np(CLOCK_UPTIME_RAW)) / nanosecondsPerSecond;
}

double MacClock::secondsSince1970() const {
    return static_cast<double>(clock_gettime_nsec_np(CLOCK_REALTIME)) / nanosecondsPerSecond;
}

}  // namespace vantrel::macos
