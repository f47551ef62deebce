#pragma once

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// An answer is one of the buttons of an alert that is open, and what the participant answers comes through.
void answersAnswerAlerts(const Transcript& transcript, Verdict& verdict);
/// A menu opens when somebody opens it.
void menusAreOpenedBySomebody(const Transcript& transcript, Verdict& verdict);
/// A key that reaches somebody or is swallowed is one that was pressed.
void keysWerePressed(const Transcript& transcript, Verdict& verdict);

}  // namespace vantrel::simulation
