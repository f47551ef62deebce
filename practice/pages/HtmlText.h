#pragma once

#include <string>
#include <string_view>

namespace vantrel::practice {

/// The text with everything escaped that has a meaning in HTML, in an element or in a quoted attribute.
std::string htmlText(std::string_view text);

}  // namespace vantrel::practice
