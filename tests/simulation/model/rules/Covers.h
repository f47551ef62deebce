#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// A cover that is hidden, closed or raised was shown, and each is closed once, hidden before.
void coversWereShown(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
