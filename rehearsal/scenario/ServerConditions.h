#pragma once

#include <optional>
#include <vector>

#include "practice/configuration/PracticeConfiguration.h"
#include "rehearsal/scenario/ReplyRule.h"

namespace vantrel::rehearsal {

/// What of the server can be otherwise while it runs. What is empty stays as it is.
struct ServerConditions {
    /// Seconds from a request to its reply.
    std::optional<double> latency;
    /// Come to those that there are.
    std::vector<practice::PracticeSession> sessions;
    std::optional<practice::VersionConfiguration> version;
    /// Before those that stand; of these the first that matches holds.
    std::vector<ReplyRule> replies;
};

}  // namespace vantrel::rehearsal
