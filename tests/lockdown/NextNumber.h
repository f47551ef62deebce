#pragma once

#include <cmath>
#include <limits>

namespace vantrel {

/// The smallest number greater than `value`, for a rule that asks for "more than".
inline double justAbove(double value) {
    return std::nextafter(value, std::numeric_limits<double>::infinity());
}

/// The greatest number less than `value`.
inline double justBelow(double value) {
    return std::nextafter(value, -std::numeric_limits<double>::infinity());
}

}  // namespace vantrel
