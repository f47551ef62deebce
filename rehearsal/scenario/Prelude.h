#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rehearsal/scenario/MacConditions.h"
#include "rehearsal/scenario/ServerConditions.h"
#include "rehearsal/scenario/Step.h"

namespace vantrel::rehearsal {

/// What is played before a scenario's own steps, and the changes after it.
struct Prelude {
    /// As named in scenarios: preludes/NAME.
    std::string name;
    std::vector<Step> timeline;
    /// Seconds since the client's launch.
    double until = 0;
    /// Its own transcript, for comparison. Empty if there is nothing to compare with.
    std::optional<std::string> keptTranscript;
    MacConditions mac;
    ServerConditions server;
};

}  // namespace vantrel::rehearsal
