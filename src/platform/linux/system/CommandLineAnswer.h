#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::linuxdesktop {

/// What a program of the client's answers to its arguments instead of starting.
struct CommandLineAnswer {
    int status = 0;
    std::string text;

    /// Empty without arguments: then the client starts. A text with a status other than 0 belongs on standard error.
    static std::optional<CommandLineAnswer> to(const std::vector<std::string_view>& arguments,
                                               std::string_view version);
};

}  // namespace vantrel::linuxdesktop
