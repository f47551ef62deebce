#pragma once

#include <string>
#include <vector>

#include "tests/simulation/program/ClassTrial.h"

namespace vantrel::simulation {

/// The program; `arguments` without its name. Returns the exit status.
int simulate(const std::vector<std::string>& arguments, const Players& players);

}  // namespace vantrel::simulation
