#pragma once

#include <string_view>

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

enum class EndCause { windowClosed, crashed, user };

std::string_view messageOf(EndCause cause);

/// The end routine with a lockdown that stands.
void endSession(Stage& stage, EndCause cause);
/// The end that is due, in whose place its first line was found.
void dueEnd(Stage& stage);

}  // namespace vantrel::simulation
