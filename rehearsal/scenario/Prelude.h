#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rehearsal/scenario/MacConditions.h"
#include "rehearsal/scenario/ServerConditions.h"
#include "rehearsal/scenario/Step.h"

namespace vantrel::rehearsal {

/// What is played before a scenario's own steps, and what is otherwise once it is over.
struct Prelude {
    /// As scenarios call it: preludes/NAME.
    std::string name;
    std::vector<Step> timeline;
    /// Seconds since the client's launch.
    double until = 0;
    /// Its own transcript, to hold what is played against; empty when there is nothing to hold it against.
    std::optional<std::string> keptTranscript;
    MacConditions mac;
    ServerConditions server;
};

}  // namespace vantrel::rehearsal
