#pragma once

#include <string>
#include <string_view>

namespace vantrel::rehearsal {

/// Describes the first line in which the transcripts differ, in both versions. Empty if they are the same to the byte.
std::string firstDifference(std::string_view kept, std::string_view played);

}  // namespace vantrel::rehearsal
