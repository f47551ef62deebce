#pragma once

#include "platform/Computer.h"

namespace vantrel {

/// Runs the client from start to end on the given computer. Main thread, asserted: a call on any other thread ends the
/// process. Returns when the application has been terminated.
void applicationMain(const Computer& computer);

}  // namespace vantrel
