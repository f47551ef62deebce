#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

void everyLineCanBeRead(const Transcript& transcript, Verdict& verdict);
void timeNeverGoesBack(const Transcript& transcript, Verdict& verdict);
void noMisuse(const Transcript& transcript, Verdict& verdict);
void oneEndOfTheRun(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
