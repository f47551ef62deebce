#pragma once

#include <string>
#include <variant>
#include <vector>

#include "rehearsal/reading/PreludeSource.h"
#include "rehearsal/reading/Problem.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// All problems found, in the order of the lines.
using Problems = std::vector<Problem>;

/// Reads the text of a scenario and its prelude. Never throws, whatever the bytes are.
std::variant<Scenario, Problems> readScenario(const std::string& text, const PreludeSource& preludes);

}  // namespace vantrel::rehearsal
