#pragma once

#include <string>
#include <vector>

namespace vantrel::simulation {

struct KeptScenario {
    std::string name;  // THEME/NAME
    std::string scenario;
    std::string transcript;  // with the lines of its prelude
};

/// All of tests/scenarios, in the order of their names.
std::vector<KeptScenario> keptScenarios();

}  // namespace vantrel::simulation
