#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// The text without white space at either end: Unicode's space separators and the tab. Line breaks do not count as
/// white space.
std::string trimmed(std::string_view text);

}  // namespace vantrel
