#pragma once

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// Step 3.5 of a lockdown.
void beginBlackout(Stage& stage);
void endBlackout(Stage& stage);
/// The displays have changed.
void remakeCovers(Stage& stage);
/// The covers are put above what has come over them, every 3 seconds.
void raiseCovers(Stage& stage);

}  // namespace vantrel::simulation
