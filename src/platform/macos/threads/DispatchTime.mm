#include "platform/macos/threads/DispatchTime.h"

#include <cmath>
#include <cstdint>

namespace vantrel::macos {

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr double longestSeconds = 1e9;

}  // namespace

dispatch_time_t timeFromNow(double seconds) {
    if (!(seconds > 0)) return dispatch_time(DISPATCH_TIME_NOW, 0);
    if (seconds >= longestSeconds) return DISPATCH_TIME_FOREVER;
    return dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(std::ceil(seconds * nanosecondsPerSecond)));
}

}  // namespace vantrel::macos
