#pragma once

#include <string>
#include <vector>

namespace vantrel::simulation {

/// The program: plays every order of what is due together in a span of a scenario and has each judged. `arguments`
/// without its name. Returns the exit status.
int orders(const std::vector<std::string>& arguments);

}  // namespace vantrel::simulation
