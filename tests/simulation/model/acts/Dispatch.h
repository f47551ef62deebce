#pragma once

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// Reads what the main thread does next, with all that belongs to it.
void dispatch(Stage& stage);

}  // namespace vantrel::simulation
