#pragma once

#include <vector>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomNumbers.h"

namespace vantrel::simulation {

/// Moments in a lockdown. Many are those at which the client itself does something, or something else happens.
class RandomMoments {
  public:
    RandomMoments(RandomNumbers& numbers, Span span, Milliseconds latency)
        : numbers_(numbers), span_(span), latency_(latency) {}

    Milliseconds next();
    const Span& span() const { return span_; }

  private:
    Milliseconds draw();
    /// On the grid of a timer that began with the lockdown.
    Milliseconds onGrid(Milliseconds interval);

    RandomNumbers& numbers_;
    const Span span_;
    const Milliseconds latency_;
    std::vector<Milliseconds> drawn_;
};

}  // namespace vantrel::simulation
