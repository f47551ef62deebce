#pragma once

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// A look at the browser that says something.
void lookAtBrowser(Stage& stage);
/// Whether a look at this moment may have nothing to say.
bool mayLookSilently(Stage& stage);
/// What follows a change of the Space.
void lookAtSpace(Stage& stage);

}  // namespace vantrel::simulation
