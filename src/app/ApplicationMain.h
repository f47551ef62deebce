#pragma once

#include "platform/Computer.h"

namespace vantrel {

/// The client from its start to its end, on the given computer. Main thread, asserted: a call on any other ends the
/// process. Returns when the application has been terminated.
void applicationMain(const Computer& computer);

}  // namespace vantrel
