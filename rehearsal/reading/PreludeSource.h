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
    /// Empty if there is nothing to compare with.
    std::optional<std::string> keptTranscript;
};

/// Why there is none: at least one sentence.
using NoPrelude = std::vector<std::string>;

/// Finds a prelude by its name in a scenario, preludes/NAME.
using PreludeSource = std::function<std::variant<FoundPrelude, NoPrelude>(const std::string& name)>;

}  // namespace vantrel::rehearsal
