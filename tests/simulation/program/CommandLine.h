#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrel::simulation {

struct CommandLine {
    struct Numbers {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        bool operator==(const Numbers&) const = default;
    };

    std::optional<Numbers> seeds;
    /// A class to print instead.
    std::optional<std::uint64_t> show;
    /// A scenario to judge instead.
    std::optional<std::string> judge;
    int jobs = 1;
    bool statistics = false;
    bool twice = false;
    /// How many failing numbers are made short.
    int shrink = 3;
    /// Where short ones are kept. Empty for nowhere.
    std::string keep;
    /// Real time for one class, in seconds.
    double limit = 120;
    bool help = false;
};

struct CommandLineError {
    std::string what;
};

/// `arguments` without the program's name.
std::variant<CommandLine, CommandLineError> readCommandLine(const std::vector<std::string>& arguments);

}  // namespace vantrel::simulation
