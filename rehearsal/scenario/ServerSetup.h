#pragma once

#include <string>
#include <vector>

#include "practice/configuration/PracticeConfiguration.h"
#include "rehearsal/scenario/ReplyRule.h"

namespace vantrel::rehearsal {

/// The practice server in the virtual network.
struct ServerSetup {
    /// Scheme, host and port, without a slash at the end.
    std::string address = "https://server.vantrel.example";
    practice::PracticeConfiguration configuration;
    /// Seconds from a request to its reply.
    double latency = 0.05;
    std::vector<ReplyRule> replies;
};

}  // namespace vantrel::rehearsal
