#pragma once

#include <span>
#include <string_view>

#include "tests/simulation/model/Verdict.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {

/// What holds of any transcript, also of one whose client cannot be followed line by line.
struct Rule {
    std::string_view name;  // a sentence
    void (*judge)(const Transcript& transcript, Verdict& verdict);
};

std::span<const Rule> everyRule();

}  // namespace vantrel::simulation
