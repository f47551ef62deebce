#pragma once

#include <string>
#include <variant>
#include <vector>

#include "rehearsal/reading/PreludeSource.h"
#include "rehearsal/reading/Problem.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// All that was found, in the order of the lines.
using Problems = std::vector<Problem>;

/// Reads the text of a scenario, and what it begins with. Whatever the bytes are, no exception leaves.
std::variant<Scenario, Problems> readScenario(const std::string& text, const PreludeSource& preludes);

}  // namespace vantrel::rehearsal
