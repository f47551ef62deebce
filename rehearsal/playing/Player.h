#pragma once

#include <functional>
#include <ostream>

#include "platform/Computer.h"
#include "rehearsal/scenario/Scenario.h"

namespace vantrel::rehearsal {

/// Plays the scenario on a virtual Mac of its own and writes the transcript. False when the client misused its
/// platform (the interface off the main thread, a wait under a lock, a deadlock); the transcript's last lines then say
/// how. The calling thread waits; virtual hours pass in milliseconds.
///
/// A client that misuses its platform without end, or leaves a thread that does not end, cannot be got rid of: the
/// transcript is written and flushed, and the program exits at once, with status 1, or 3 when that failed.
bool play(const Scenario& scenario, std::ostream& transcript);

/// The same with another program in the place of the client; it runs on the main thread.
bool play(const Scenario& scenario, std::ostream& transcript, const std::function<void(const Computer&)>& program);

}  // namespace vantrel::rehearsal
