#pragma once

#include <vector>

#include "rehearsal/scenario/Action.h"

namespace vantrel::rehearsal {

/// One thing that happens at a moment, in seconds since the client's launch.
struct Step {
    double at = 0;
    Action action;
    /// What happens at once with it, unordered but by the seed.
    std::vector<Action> together = {};
};

}  // namespace vantrel::rehearsal
