#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// The steps of an activation, a launch and an end that have only one way to go on, or one way to come about.
void eachStepIsFollowed(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
