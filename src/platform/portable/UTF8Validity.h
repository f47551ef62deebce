#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// Whether the bytes are well-formed UTF-8: shortest forms only, no surrogates, nothing above U+10FFFF. Any thread.
bool isValidUTF8(std::string_view bytes);

/// The text with U+FFFD for each byte that is no part of well-formed UTF-8. Any thread.
std::string repairedUTF8(std::string_view bytes);

}  // namespace vantrel
