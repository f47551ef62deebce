#pragma once

#include <cstdint>
#include <limits>

namespace vantrel::virtualmac {

/// Uptime in nanoseconds since the virtual Mac was switched on.
using Moment = std::int64_t;

/// A moment that never comes.
inline constexpr Moment never = std::numeric_limits<Moment>::max();

/// Whole nanoseconds. Negative values and NaN become 0, too large ones `never`.
Moment fromSeconds(double seconds);

double toSeconds(Moment moment);

/// `seconds` after `start`, or `never` if a Moment cannot hold that.
Moment later(Moment start, double seconds);

}  // namespace vantrel::virtualmac
