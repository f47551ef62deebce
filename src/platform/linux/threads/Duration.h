#pragma once

#include <chrono>

namespace vantrel::linuxdesktop {

/// Seconds as a duration of the steady clock. Negative values and NaN count as zero; what the clock cannot hold counts
/// as thirty years.
inline std::chrono::steady_clock::duration steadyDuration(double seconds) {
    constexpr double longest = 30.0 * 365 * 86400;
    if (!(seconds > 0)) return std::chrono::steady_clock::duration::zero();
    if (seconds > longest) seconds = longest;
    return std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace vantrel::linuxdesktop
