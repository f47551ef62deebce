#pragma once

#include <string>
#include <variant>

namespace vantrel::practice {

struct PasswordError {
    std::string message;
};

/// The file's first line, at least 8 bytes. A password on the command line would be visible in every process list.
std::variant<std::string, PasswordError> readPasswordFile(const std::string& path);

}  // namespace vantrel::practice
