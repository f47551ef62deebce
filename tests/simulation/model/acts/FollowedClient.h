#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Scenario.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// Follows the client line by line: each has to be asked for by what came before, and what is asked for has to come.
/// Ends at the first departure. Only of a transcript that begins with the client's launch.
void followClient(const Transcript& transcript, const Scenario& scenario, Verdict& verdict);

}  // namespace vantrel::simulation
