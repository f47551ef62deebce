#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace vantrel::practice {

/// The text with every {{name}} replaced by its value. A value is markup and is not searched again. A name without a
/// value stays unchanged.
std::string filledTemplate(std::string_view text,
                           std::initializer_list<std::pair<std::string_view, std::string_view>> values);

}  // namespace vantrel::practice
