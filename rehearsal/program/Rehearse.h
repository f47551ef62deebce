#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "rehearsal/playing/PlayResult.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// Plays a scenario and writes its transcript; with `whole` also its prelude's events.
using ScenarioPlayer = std::function<PlayResult(const Scenario&, std::ostream&, bool whole)>;

/// The program: reads the command line (`arguments`, without the program's name) and the file, and has the scenario
/// played. Returns the exit status.
int rehearse(const std::vector<std::string>& arguments, const ScenarioPlayer& player);

}  // namespace vantrel::rehearsal
