#pragma once

#include <functional>
#include <ostream>

#include "platform/virtual/VirtualMac.h"
#include "rehearsal/playing/PlayResult.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// A program in the place of the client; it runs on the main thread.
using Program = std::function<void(const Computer&)>;

/// Makes the program for the Mac that it is going to run on. What it returns lives until nothing of the program runs
/// any more.
using ProgramMaker = std::function<Program(virtualmac::VirtualMac&)>;

struct PlayOptions {
    /// Without one the client itself is played.
    Program program = {};
    /// Goes before `program`.
    ProgramMaker make = {};
    /// What the prelude brings is written line by line, instead of one line for it.
    bool whole = false;
};

/// Plays the scenario on a virtual Mac of its own and writes the transcript. When the client misused its platform (the
/// interface off the main thread, a wait under a lock, a deadlock) the transcript's last lines say how. The calling
/// thread waits; virtual hours pass in milliseconds.
///
/// A client that misuses its platform without end, or leaves a thread that does not end, cannot be got rid of: the
/// transcript is written and flushed, and the program exits at once, with status 1, or 3 when that failed.
PlayResult play(const Scenario& scenario, std::ostream& transcript, const PlayOptions& options = {});

}  // namespace vantrel::rehearsal
