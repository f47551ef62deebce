#include "practice/program/PasswordFile.h"

#include <cstddef>
#include <fstream>

namespace vantrel::practice {

namespace {

constexpr std::size_t shortest = 8;

}  // namespace

std::variant<std::string, PasswordError> readPasswordFile(const std::string& path) {
    std::ifstream file(path);
    std::string password;
    if (!std::getline(file, password)) return PasswordError{path + ": the file cannot be read, or is empty"};
    if (!password.empty() && password.back() == '\r') password.pop_back();
    if (password.size() < shortest) {
        return PasswordError{path + ": the password is shorter than " + std::to_string(shortest) + " bytes"};
    }
    return password;
}

}  // namespace vantrel::practice
