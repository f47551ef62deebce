#pragma once

#include <string>

#include "rehearsal/scenario/ServerConditions.h"

namespace vantrel::rehearsal {

/// The practice server in the virtual network: its address, which is fixed, and its first conditions. By default it
/// knows no session and never an update, and replies after 0.05 seconds.
struct ServerSetup : ServerConditions {
    /// Scheme, host and port, without a trailing slash.
    std::string address = "https://server.vantrel.example";
};

}  // namespace vantrel::rehearsal
