#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrel::rehearsal {

struct CommandLine {
    std::string file;
    /// Overrides the file's seed.
    std::optional<std::uint64_t> seed;
    /// With the prelude's events, line by line.
    bool whole = false;
    bool help = false;
};

struct CommandLineError {
    std::string what;
};

/// `arguments` without the program's name.
std::variant<CommandLine, CommandLineError> readCommandLine(const std::vector<std::string>& arguments);

}  // namespace vantrel::rehearsal
