#pragma once

#include <string>

namespace vantrel::rehearsal {

/// What is wrong with a scenario file, and where.
struct Problem {
    /// Counted from 1.
    int line = 1;
    std::string what;
    bool operator==(const Problem&) const = default;
};

}  // namespace vantrel::rehearsal
