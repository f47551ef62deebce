#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

void theEndHasItsOrder(const Transcript& transcript, Verdict& verdict);
void oneStatusItem(const Transcript& transcript, Verdict& verdict);
void swallowedKeysAreNamed(const Transcript& transcript, Verdict& verdict);

/// Elements and logs name processes and windows that there are, and no window is closed twice at once.
void whatIsNamedIsThere(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
