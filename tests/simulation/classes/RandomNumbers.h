#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>

#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// Numbers that look random and are the same on every computer: integers alone, no distribution of the library. Two are
/// never drawn in one expression, whose order each compiler chooses.
class RandomNumbers {
  public:
    explicit RandomNumbers(std::uint64_t seed) : state_(seed) {}

    /// Numbers of their own, so that a change of one theme's draws leaves the others as they were.
    RandomNumbers branch();

    /// From 0 on, less than `count`, which is at least 1.
    std::size_t below(std::size_t count);
    /// From `least` to `most`, both included.
    long long from(long long least, long long most);
    bool chance(int percent) { return below(100) < static_cast<std::size_t>(percent); }
    /// Whole hundredths of a second.
    Milliseconds moment(Milliseconds least, Milliseconds most) { return from(least / 10, most / 10) * 10; }

    template <class Range>
    const auto& pick(const Range& range) {
        return range[below(std::size(range))];
    }

    /// A place in `weights`, by their weight.
    std::size_t weighted(std::span<const int> weights);

  private:
    std::uint64_t next();

    std::uint64_t state_;
};

}  // namespace vantrel::simulation
