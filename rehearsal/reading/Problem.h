#pragma once

#include <string>

namespace vantrel::rehearsal {

/// A mistake in a scenario file, and its place.
struct Problem {
    /// Counted from 1.
    int line = 1;
    std::string what;
    bool operator==(const Problem&) const = default;
};

}  // namespace vantrel::rehearsal
