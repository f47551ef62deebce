#pragma once

#include <cstdint>

namespace vantrel {

/// The number without its fraction, for log lines. NaN gives 0; large values are limited to 10 to the 15th.
std::int64_t wholePart(double value);

}  // namespace vantrel
