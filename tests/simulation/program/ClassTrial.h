#pragma once

#include <functional>
#include <string>
#include <vector>

#include "rehearsal/scenario/Scenario.h"
#include "tests/simulation/model/Judgement.h"
#include "tests/simulation/program/Counts.h"

namespace vantrel::simulation {

/// Plays a scenario and returns its transcript.
using ScenarioPlayer = std::function<std::string(const rehearsal::Scenario&)>;

/// How classes are played by this program.
struct Players {
    /// What a person types to run this program.
    std::string command;
    ScenarioPlayer play;
    /// Another way, whose transcript must be the same. Empty for none.
    ScenarioPlayer playOtherwise = {};
    /// What is wrong after a play, apart from the transcript.
    std::function<std::vector<BrokenRule>()> inspect = {};
    /// Whether no more can be played in this process.
    std::function<bool()> isSpent = {};
};

struct TrialResult {
    std::vector<BrokenRule> broken;
    Counts counts;
};

/// Plays and judges the class of that text. With `twice` the same bytes must come again.
TrialResult tryClass(const std::string& text, const Players& players, bool twice);

}  // namespace vantrel::simulation
