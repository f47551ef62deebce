#include "platform/virtual/scheduler/Moment.h"

#include <cmath>

namespace vantrel::virtualmac {

Moment fromSeconds(double seconds) {
    if (!(seconds > 0)) return 0;
    const double nanoseconds = seconds * 1e9;
    if (nanoseconds >= 9.2e18) return never;
    return static_cast<Moment>(std::llround(nanoseconds));
}

double toSeconds(Moment moment) {
    return static_cast<double>(moment) / 1e9;
}

Moment later(Moment start, double seconds) {
    const Moment distance = fromSeconds(seconds);
    return distance >= never - start ? never : start + distance;
}

}  // namespace vantrel::virtualmac
