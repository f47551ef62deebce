#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// Heartbeats and notices go to the server that was told of, as a participant of a session that was joined.
void heartbeatsHaveTheirForm(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
