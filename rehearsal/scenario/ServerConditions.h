#pragma once

#include <optional>
#include <vector>

#include "practice/configuration/PracticeConfiguration.h"
#include "rehearsal/scenario/ExchangeRule.h"

namespace vantrel::rehearsal {

/// What can change on the server while it runs. Empty values change nothing.
struct ServerConditions {
    /// Seconds from a request to its reply.
    std::optional<double> latency;
    /// Added to the existing ones.
    std::vector<practice::PracticeSession> sessions;
    std::optional<practice::VersionConfiguration> version;
    /// Take precedence over the existing rules. The first one that matches applies.
    std::vector<ExchangeRule> replies;
};

}  // namespace vantrel::rehearsal
