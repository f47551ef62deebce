#pragma once

#include <cstdint>

namespace vantrel {

/// The number without its fraction, for log lines. Not a number gives 0; what is too large is cut to 10 to the 15th.
std::int64_t wholePart(double value);

}  // namespace vantrel
