#pragma once

#include <string_view>

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// The first heartbeat, with its log line.
void beginHeartbeats(Stage& stage);
/// A heartbeat whose time has come.
void beat(Stage& stage);
/// A heartbeat that should have gone out then and did not: its violations are lost with a body that failed.
void loseViolations(Stage& stage, std::int64_t at);
/// One that is due now may have gone out before what holds the timers up from now on.
void perhapsBeat(Stage& stage);
/// The disconnect notice, with the wait for its reply, and the end of the heartbeats.
void sendNotice(Stage& stage, std::string_view message);

}  // namespace vantrel::simulation
