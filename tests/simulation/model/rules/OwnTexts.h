#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// Log lines, alerts, labels and the like, each against the table of the product's texts.
void everyTextIsTheProducts(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
