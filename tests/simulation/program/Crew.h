#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/simulation/program/ClassTrial.h"

namespace vantrel::simulation {

/// Plays classes in processes of their own, so that one that crashes or hangs is known by its number and the others go
/// on. The calling process must have a single thread.
class Crew {
  public:
    /// The trial of a number; runs in a child.
    using Trial = std::function<TrialResult(std::uint64_t number)>;
    /// Called here, in the order in which they end.
    using Receive = std::function<void(std::uint64_t number, const TrialResult& result)>;

    /// A child ends after a number at which `isSpent`. `limitSeconds` of real time are granted to a number.
    Crew(Trial trial, std::function<bool()> isSpent, double limitSeconds)
        : trial_(std::move(trial)), isSpent_(std::move(isSpent)), limitSeconds_(limitSeconds) {}

    /// From `first` to `last`, both included, by `jobs` processes at a time.
    void run(std::uint64_t first, std::uint64_t last, int jobs, const Receive& receive) const;

    /// One number, in one process.
    TrialResult run(std::uint64_t number) const;

  private:
    class Child;

    Trial trial_;
    std::function<bool()> isSpent_;
    double limitSeconds_;
};

}  // namespace vantrel::simulation
