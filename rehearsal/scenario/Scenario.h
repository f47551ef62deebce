#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rehearsal/scenario/MacSetup.h"
#include "rehearsal/scenario/Prelude.h"
#include "rehearsal/scenario/ServerSetup.h"
#include "rehearsal/scenario/Step.h"

namespace vantrel::rehearsal {

/// What is written: the Mac, the server, and what happens when.
struct Scenario {
    std::string title;
    /// At the launch: the prelude's where there is one.
    MacSetup mac;
    ServerSetup server;
    std::optional<Prelude> prelude;
    /// Times do not go back; equal times are in the written order.
    std::vector<Step> timeline;
    /// Seconds after which the run is over.
    double until = 0;
};

}  // namespace vantrel::rehearsal
