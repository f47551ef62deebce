#pragma once

#include <string>
#include <string_view>

namespace vantrel::practice {

/// Whether the text can be a session's code: one or more ASCII letters, digits, '-', '.', '_' or '~', so that a path
/// can contain it without escapes.
bool isSessionCode(std::string_view text);

/// The text with its ASCII letters in upper case.
std::string upperCaseCode(std::string_view text);

}  // namespace vantrel::practice
