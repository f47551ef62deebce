#pragma once

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// From the first line of an activation to the requests for camera and microphone.
void activate(Stage& stage, const Due& result);
/// What follows the launch of the browser, up to the complete lockdown.
void completeLockdown(Stage& stage);

}  // namespace vantrel::simulation
