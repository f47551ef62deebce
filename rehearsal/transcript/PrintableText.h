#pragma once

#include <string>
#include <string_view>

namespace vantrel::rehearsal {

/// The text as a transcript shows it: control characters except line breaks as \xNN.
std::string printable(std::string_view text);

/// A body as a transcript shows it: JSON compact with sorted keys, other text unchanged, other bytes in hexadecimal.
/// After 2,000 bytes it is cut and its length given.
std::string printableBody(std::string_view body);

}  // namespace vantrel::rehearsal
