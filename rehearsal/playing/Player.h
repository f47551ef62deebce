#pragma once

#include <functional>
#include <memory>
#include <ostream>

#include "platform/virtual/VirtualMac.h"
#include "platform/virtual/scheduler/ChoiceSource.h"
#include "rehearsal/playing/PlayResult.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// A program that replaces the client. It runs on the main thread.
using Program = std::function<void(const Computer&)>;

/// Creates the program for the Mac that will run it. The result lives until nothing of the program runs any more.
using ProgramMaker = std::function<Program(virtualmac::VirtualMac&)>;

struct PlayOptions {
    /// If empty, the client itself is played.
    Program program = {};
    /// Takes precedence over `program`.
    ProgramMaker make = {};
    /// Writes the prelude's events line by line instead of one line for all.
    bool whole = false;
    /// Orders what is due at the same moment, instead of the scenario's seed.
    std::shared_ptr<virtualmac::ChoiceSource> choices = nullptr;
};

/// Plays the scenario on its own virtual Mac and writes the transcript. If the client misused its platform (a wait
/// under a lock, a deadlock), the transcript's last lines describe it. The calling thread waits; virtual hours pass in
/// milliseconds.
///
/// A client that uses an interface off the main thread goes no further, as on a Mac. One that misuses its platform
/// without end, or whose threads do not end, cannot be stopped. The transcript is then written and flushed, and the
/// program exits at once with status 1, or 3 if writing failed.
PlayResult play(const Scenario& scenario, std::ostream& transcript, const PlayOptions& options = {});

}  // namespace vantrel::rehearsal
