#pragma once

#include <cstddef>
#include <string>

namespace vantrel::practice {

/// The text's beginning, as many bytes at most, and no character cut in two. What stands in UTF-8 stays so.
std::string keptText(std::string text, std::size_t longest);

}  // namespace vantrel::practice
