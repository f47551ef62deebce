#include "rehearsal/program/CommandLine.h"

#include <charconv>

namespace vantrel::rehearsal {

std::variant<CommandLine, CommandLineError> readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    bool optionsAreOver = false;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const auto& argument = arguments[index];
        if (!optionsAreOver && argument == "--") {
            optionsAreOver = true;
        } else if (!optionsAreOver && (argument == "--help" || argument == "-h")) {
            line.help = true;
        } else if (!optionsAreOver && argument == "--whole") {
            line.whole = true;
        } else if (!optionsAreOver && (argument == "--seed" || argument.starts_with("--seed="))) {
            const bool isNext = argument == "--seed";
            if (isNext && index + 1 == arguments.size()) return CommandLineError{"--seed needs a number"};
            const auto text = isNext ? arguments[++index] : argument.substr(7);
            std::uint64_t seed = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seed);
            if (error != std::errc{} || end != text.data() + text.size()) {
                return CommandLineError{"--seed needs a whole number, not '" + text + "'"};
            }
            line.seed = seed;
        } else if (!optionsAreOver && argument.starts_with("-") && argument.size() > 1) {
            return CommandLineError{"unknown option " + argument};
        } else if (!line.file.empty()) {
            return CommandLineError{"one file at a time: " + line.file + " or " + argument};
        } else {
            line.file = argument;
        }
    }
    if (line.file.empty() && !line.help) return CommandLineError{"no file is given"};
    return line;
}

}  // namespace vantrel::rehearsal
