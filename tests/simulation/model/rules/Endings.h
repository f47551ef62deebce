#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

void noMisuse(const Transcript& transcript, Verdict& verdict);
void oneEndForEachLockdown(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
