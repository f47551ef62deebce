#pragma once

#include <string>

#include "rehearsal/scenario/ServerConditions.h"

namespace vantrel::rehearsal {

/// The practice server in the virtual network: its address, which stays, and its first conditions. Without them it
/// knows no session and never an update, and replies after 0.05 seconds.
struct ServerSetup : ServerConditions {
    /// Scheme, host and port, without a slash at the end.
    std::string address = "https://server.vantrel.example";
};

}  // namespace vantrel::rehearsal
