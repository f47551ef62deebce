#include "lockdown/WholePart.h"

#include <algorithm>
#include <cmath>

namespace vantrel {
namespace {

constexpr double largestPrintable = 1e15;

}  // namespace

std::int64_t wholePart(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<std::int64_t>(std::clamp(value, -largestPrintable, largestPrintable));
}

}  // namespace vantrel
