#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vantrel::simulation {

struct BrokenRule {
    std::string rule;  // a sentence
    std::size_t line;  // of the transcript, from 1; 0 for the whole
    std::string why;
};

/// Holds the transcript of a played scenario against the rules of the client. Any thread.
std::vector<BrokenRule> brokenRules(const std::string& scenario, const std::string& transcript);

}  // namespace vantrel::simulation
