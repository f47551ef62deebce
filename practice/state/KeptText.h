#pragma once

#include <cstddef>
#include <string>

namespace vantrel::practice {

/// The beginning of the text, at most `longest` bytes, without cutting a character in two. UTF-8 stays valid.
std::string keptText(std::string text, std::size_t longest);

}  // namespace vantrel::practice
