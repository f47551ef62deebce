#pragma once

#include <string>
#include <string_view>

namespace vantrel::rehearsal {

/// Tells the first line in which the transcripts differ, as the one has it and as the other; empty when they are the
/// same to the byte.
std::string firstDifference(std::string_view kept, std::string_view played);

}  // namespace vantrel::rehearsal
