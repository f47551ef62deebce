#pragma once

#include <cstdint>

#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// The class of that number: always the same, on every computer.
WrittenClass randomClass(std::uint64_t number);

}  // namespace vantrel::simulation
