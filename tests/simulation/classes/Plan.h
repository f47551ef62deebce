#pragma once

#include <string>
#include <vector>

#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// What the themes of one class know of each other.
struct Plan {
    /// Those that stand at the launch.
    std::vector<std::string> displays;
    /// Names of applications that run at the launch.
    std::vector<std::string> applications;
    /// The name of the browser that the client will take.
    std::string browser = "Google Chrome";
    /// From the join's outcome to the lockdown, as a rule.
    Milliseconds launchTakes = 3'000;
    Milliseconds latency = 50;
    /// Codes of sessions that can be joined.
    std::vector<std::string> codes;
    bool nameIsSaved = false;
    bool accessibilityIsGranted = true;
    /// How many permission prompts the first activation shows.
    int prompts = 0;
    bool updateIsOffered = false;
};

/// A lockdown, as far as it goes as planned.
struct Span {
    Milliseconds from = 0;
    Milliseconds to = 0;
};

}  // namespace vantrel::simulation
