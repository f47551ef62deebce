#pragma once

#include <functional>
#include <ostream>

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// Plays the scenario on a virtual Mac of its own and writes the transcript. False when the client misused its
/// platform (the interface off the main thread, a wait under a lock, a deadlock); the transcript's last lines then say
/// how. The calling thread waits; virtual hours pass in milliseconds.
///
/// A client that misuses its platform without end, or leaves a thread that does not end, cannot be got rid of: the
/// transcript is written and flushed, and the program exits at once, with status 1, or 3 when that failed.
bool play(const Scenario& scenario, std::ostream& transcript);

/// A program in the place of the client; it runs on the main thread.
using Program = std::function<void(const Computer&)>;

bool play(const Scenario& scenario, std::ostream& transcript, const Program& program);

/// Makes the program for the Mac that it is going to run on. What it returns lives until nothing of the program runs
/// any more.
using ProgramMaker = std::function<Program(virtualmac::VirtualMac&)>;

bool playMade(const Scenario& scenario, std::ostream& transcript, const ProgramMaker& make);

}  // namespace vantrel::rehearsal
