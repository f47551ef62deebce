#pragma once

#include <string>
#include <variant>

namespace vantrel::practice {

struct PasswordError {
    std::string message;
};

/// The file's first line, of 8 bytes at least. A password among the options would stand in every list of processes.
std::variant<std::string, PasswordError> readPasswordFile(const std::string& path);

}  // namespace vantrel::practice
