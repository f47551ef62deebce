#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rehearsal/scenario/MacSetup.h"
#include "rehearsal/scenario/Prelude.h"
#include "rehearsal/scenario/ServerSetup.h"
#include "rehearsal/scenario/Step.h"

namespace vantrel::rehearsal {

/// A written scenario: the Mac, the server, and what happens when.
struct Scenario {
    std::string title;
    /// At the launch. If there is a prelude, the prelude's.
    MacSetup mac;
    ServerSetup server;
    std::optional<Prelude> prelude;
    /// Times never decrease. Equal times keep the written order.
    std::vector<Step> timeline;
    /// The run ends after this many seconds.
    double until = 0;
};

}  // namespace vantrel::rehearsal
