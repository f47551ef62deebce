#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace vantrel::practice {

/// The text with every {{name}} replaced by its value. A value is markup already, and is not looked through again; a
/// name that has no value stays as it stands.
std::string filledTemplate(std::string_view text,
                           std::initializer_list<std::pair<std::string_view, std::string_view>> values);

}  // namespace vantrel::practice
