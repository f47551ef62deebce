#include "rehearsal/program/Rehearse.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "rehearsal/program/CommandLine.h"
#include "rehearsal/reading/ScenarioReader.h"

namespace vantrel::rehearsal {
namespace {

constexpr int misused = 1;
constexpr int badInput = 2;
constexpr int unwritten = 3;

constexpr const char* usage =
    "vantrel-rehearse FILE [--seed N]\n"
    "Plays the scenario on the virtual Mac and prints its transcript. The seed orders what is due at the same "
    "moment;\n"
    "without the option it is the file's, or 0. Exit status: 0; 1 when the client misused its platform; 2 for a bad\n"
    "file or command line; 3 when the transcript could not be written.\n";

std::optional<std::string> contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    // A folder opens like a file on some systems, and fails at the first byte.
    file.peek();
    if (!file.is_open() || file.bad()) return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad()) return std::nullopt;
    return text;
}

int run(const std::vector<std::string>& arguments, const ScenarioPlayer& player) {
    const auto parsed = readCommandLine(arguments);
    if (const auto* error = std::get_if<CommandLineError>(&parsed)) {
        std::cerr << "vantrel-rehearse: " << error->what << "\n" << usage;
        return badInput;
    }
    const auto& line = std::get<CommandLine>(parsed);
    if (line.help) {
        std::cout << usage;
        return 0;
    }
    const auto text = contents(line.file);
    if (!text) {
        std::cerr << line.file << ":1: the file cannot be read\n";
        return badInput;
    }
    const auto read = readScenario(*text);
    if (const auto* problems = std::get_if<Problems>(&read)) {
        for (const auto& problem : *problems)
            std::cerr << line.file << ":" << problem.line << ": " << problem.what << "\n";
        return badInput;
    }
    auto scenario = std::get<Scenario>(read);
    if (line.seed) scenario.mac.seed = *line.seed;
    const bool clean = player(scenario, std::cout);
    if (!std::cout.flush()) {
        std::cerr << "vantrel-rehearse: the transcript cannot be written\n";
        return unwritten;
    }
    return clean ? 0 : misused;
}

}  // namespace

int rehearse(const std::vector<std::string>& arguments, const ScenarioPlayer& player) {
    try {
        return run(arguments, player);
    } catch (const std::exception& exception) {
        std::cerr << "vantrel-rehearse: " << exception.what() << "\n";
        return badInput;
    }
}

}  // namespace vantrel::rehearsal
