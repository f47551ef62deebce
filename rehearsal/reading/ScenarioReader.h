#pragma once

#include <string>
#include <variant>
#include <vector>

#include "rehearsal/Problem.h"
#include "rehearsal/Rehearsal.h"

namespace vantrel::rehearsal {

/// All that was found, in the order of the lines.
using Problems = std::vector<Problem>;

/// Reads the text of a rehearsal. Whatever the bytes are, no exception leaves.
std::variant<Rehearsal, Problems> readRehearsal(const std::string& text);

}  // namespace vantrel::rehearsal
