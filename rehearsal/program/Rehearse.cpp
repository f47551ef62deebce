#include "rehearsal/program/Rehearse.h"

#include <exception>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

#include "rehearsal/program/CommandLine.h"
#include "rehearsal/reading/FileText.h"
#include "rehearsal/reading/PreludeFolder.h"
#include "rehearsal/reading/ScenarioReader.h"

namespace vantrel::rehearsal {
namespace {

constexpr int misused = 1;
constexpr int badInput = 2;
constexpr int unwritten = 3;
constexpr int otherPrelude = 4;

constexpr const char* usage =
    "vantrel-rehearse FILE [--seed N] [--whole]\n"
    "Plays the scenario on the virtual Mac and prints its transcript. The seed orders what is due at the same\n"
    "moment; without the option it is the file's, or 0. With --whole what a prelude brings is printed line by line,\n"
    "instead of one line for it. Exit status: 0; 1 when the client misused its platform; 2 for a bad file or command\n"
    "line; 3 when the transcript could not be written; 4 when the prelude's part was not the kept one.\n";

int finish(const PlayResult& result, const Scenario& scenario, const std::string& file) {
    if (!std::cout.flush()) {
        std::cerr << "vantrel-rehearse: the transcript cannot be written\n";
        return unwritten;
    }
    if (scenario.prelude && !result.preludeDifference.empty()) {
        std::cerr << file << ": the part of " << scenario.prelude->name << " is not as it is kept, from "
                  << result.preludeDifference << "\n";
    }
    if (!result.clean) return misused;
    return result.preludeDifference.empty() ? 0 : otherPrelude;
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
    const auto text = fileText(line.file);
    if (!text) {
        std::cerr << line.file << ":1: the file cannot be read\n";
        return badInput;
    }
    // Transcripts are kept for the natural order.
    const PreludeFolder preludes(line.file, line.seed.value_or(0) == 0);
    const auto read = readScenario(*text, [&preludes](const std::string& name) { return preludes.find(name); });
    if (const auto* problems = std::get_if<Problems>(&read)) {
        for (const auto& problem : *problems)
            std::cerr << line.file << ":" << problem.line << ": " << problem.what << "\n";
        return badInput;
    }
    auto scenario = std::get<Scenario>(read);
    if (line.seed) scenario.mac.seed = *line.seed;
    return finish(player(scenario, std::cout, line.whole), scenario, line.file);
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
