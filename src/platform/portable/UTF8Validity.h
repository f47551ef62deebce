#pragma once

#include <string_view>

namespace vantrel {

/// Whether the bytes are well-formed UTF-8: shortest forms only, no surrogates, nothing above U+10FFFF. Any thread.
bool isValidUTF8(std::string_view bytes);

}  // namespace vantrel
