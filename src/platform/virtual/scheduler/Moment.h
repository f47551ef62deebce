#pragma once

#include <cstdint>
#include <limits>

namespace vantrel::virtualmac {

/// A moment of uptime in nanoseconds since the virtual Mac was switched on.
using Moment = std::int64_t;

/// The moment that does not come.
inline constexpr Moment never = std::numeric_limits<Moment>::max();

/// Whole nanoseconds. What is negative or not a number becomes 0, what is too long `never`.
Moment fromSeconds(double seconds);

double toSeconds(Moment moment);

/// `seconds` after `start`; `never` when that is beyond what a Moment can hold.
Moment later(Moment start, double seconds);

}  // namespace vantrel::virtualmac
