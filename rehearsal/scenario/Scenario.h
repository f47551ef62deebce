#pragma once

#include <string>
#include <vector>

#include "rehearsal/scenario/Action.h"
#include "rehearsal/scenario/MacSetup.h"
#include "rehearsal/scenario/ServerSetup.h"

namespace vantrel::rehearsal {

/// One thing that happens at a moment, in seconds since the client's launch.
struct Step {
    double at = 0;
    Action action;
    /// What happens at once with it, unordered but by the seed.
    std::vector<Action> together = {};
};

/// A written scenario: the Mac, the server, and what happens when.
struct Scenario {
    std::string title;
    MacSetup mac;
    ServerSetup server;
    /// Times do not go back; equal times are in the written order.
    std::vector<Step> timeline;
    /// Seconds after which the run is over.
    double until = 0;
};

}  // namespace vantrel::rehearsal
