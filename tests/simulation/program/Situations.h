#pragma once

#include <string>

#include "tests/simulation/program/Counts.h"

namespace vantrel::simulation {

/// What came in one class, read from its scenario and its transcript.
Counts situations(const std::string& scenario, const std::string& transcript);

}  // namespace vantrel::simulation
