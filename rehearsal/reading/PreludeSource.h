#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// A scenario that another one begins with.
struct FoundPrelude {
    Scenario scenario;
    /// Empty when what is played is held against nothing.
    std::optional<std::string> keptTranscript;
};

/// Why there is none, a sentence each; at least one.
using NoPrelude = std::vector<std::string>;

/// Finds a prelude by the name that stands in a scenario, preludes/NAME.
using PreludeSource = std::function<std::variant<FoundPrelude, NoPrelude>(const std::string& name)>;

}  // namespace vantrel::rehearsal
