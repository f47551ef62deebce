#pragma once

#include <string>
#include <string_view>

namespace vantrel::rehearsal {

/// The text as a transcript shows it: control characters but the line break as \xNN.
std::string printable(std::string_view text);

/// A body as a transcript shows it: JSON compact with sorted keys, other text as it is, other bytes in hexadecimal.
/// What is longer than 2,000 bytes is cut, and its length told.
std::string printableBody(std::string_view body);

}  // namespace vantrel::rehearsal
