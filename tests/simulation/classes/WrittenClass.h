#pragma once

#include <string>
#include <vector>

namespace vantrel::simulation {

/// Since the launch.
using Milliseconds = long long;

/// What happens at one moment.
struct WrittenStep {
    Milliseconds at = 0;
    /// Each as in a scenario's step, such as `key: cmd+tab`. Several begin at once.
    std::vector<std::string> actions;
};

/// A class as a scenario in pieces: each can be left out, and what is left is a scenario still.
struct WrittenClass {
    std::string title;
    /// `word: value`, each on one line.
    std::vector<std::string> mac;
    /// Entries of lists of the Mac.
    std::vector<std::string> displays;
    std::vector<std::string> browsers;
    std::vector<std::string> applications;
    std::vector<std::string> server;
    std::vector<std::string> sessions;
    std::vector<std::string> replies;
    /// In any order; written in the order of time, equal moments in this one.
    std::vector<WrittenStep> timeline;
    Milliseconds until = 0;

    /// The scenario's text.
    std::string text() const;
};

/// In seconds, without a superfluous digit.
std::string secondsText(Milliseconds time);

/// Between double quotes.
std::string quoted(const std::string& text);

}  // namespace vantrel::simulation
