#include "tests/simulation/program/Simulate.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>
#include <variant>

#include "rehearsal/reading/FileText.h"
#include "tests/simulation/classes/RandomClass.h"
#include "tests/simulation/program/CommandLine.h"
#include "tests/simulation/program/Crew.h"
#include "tests/simulation/program/Shrinker.h"

namespace vantrel::simulation {
namespace {

constexpr int ruleBroken = 1;
constexpr int badInput = 2;

constexpr const char* usage =
    "--seeds A..B [--jobs N] [--statistics] [--twice] [--shrink N] [--keep FOLDER] [--limit SECONDS]\n"
    "    plays and judges these random classes; makes the first N failing ones (3) short\n"
    "--show SEED     prints that class as a scenario\n"
    "--judge FILE    plays and judges a scenario\n"
    "Exit status: 0; 1 when a rule is broken; 2 for a bad command line or file.\n";

void print(const TrialResult& result) {
    for (const auto& [rule, line, why] : result.broken) {
        std::cout << "  " << rule << (line > 0 ? " (line " + std::to_string(line) + " of the transcript)" : "") << ": "
                  << why << "\n";
    }
}

class Simulation {
  public:
    Simulation(const CommandLine& line, const Players& players) : line_(line), players_(players) {}

    int run() {
        const auto began = std::chrono::steady_clock::now();
        const Crew crew([this](std::uint64_t number) { return trial(randomClass(number).text()); }, players_.isSpent,
                        line_.limit);
        crew.run(line_.seeds->first, line_.seeds->last, line_.jobs,
                 [this](std::uint64_t number, const TrialResult& result) { receive(number, result); });
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
        if (line_.statistics) std::cout << table(counts_);
        std::cout << classes_ << " classes, " << failed_.size() << " with a broken rule; "
                  << static_cast<double>(classes_) / took.count() << " a second\n";
        return failed_.empty() ? 0 : ruleBroken;
    }

  private:
    TrialResult trial(const std::string& text) const { return tryClass(text, players_, line_.twice); }

    void receive(std::uint64_t number, const TrialResult& result) {
        ++classes_;
        add(counts_, result.counts);
        if (result.broken.empty()) return;
        failed_.push_back(number);
        std::cout << "class " << number << ":\n";
        print(result);
        std::cout << "  again: " << players_.command << " --seeds " << number << ".." << number << "\n";
        if (static_cast<int>(failed_.size()) <= line_.shrink) shrink(number, result.broken.front().rule);
        std::cout.flush();
    }

    /// A class is of interest as long as the same rule is broken.
    void shrink(std::uint64_t number, const std::string& rule) const {
        constexpr int attempts = 600;
        const auto isBroken = [&](const WrittenClass& written) {
            const Crew crew([&](std::uint64_t) { return trial(written.text()); }, {}, line_.limit);
            const auto result = crew.run(0);
            return std::any_of(result.broken.begin(), result.broken.end(),
                               [&](const BrokenRule& broken) { return broken.rule == rule; });
        };
        const auto text = Shrinker(isBroken, attempts).shrink(randomClass(number)).text();
        std::cout << "  short:\n" << text << "\n";
        if (line_.keep.empty()) return;
        std::filesystem::create_directories(line_.keep);
        const auto file = std::filesystem::path(line_.keep) / (std::to_string(number) + ".yaml");
        std::ofstream(file) << text;
        std::cout << "  kept as " << file.string() << "\n";
    }

    const CommandLine& line_;
    const Players& players_;
    Counts counts_;
    std::uint64_t classes_ = 0;
    std::vector<std::uint64_t> failed_;
};

int judge(const CommandLine& line, const Players& players) {
    const auto text = rehearsal::fileText(*line.judge);
    if (!text) {
        std::cerr << *line.judge << ": the file cannot be read\n";
        return badInput;
    }
    const auto result =
        Crew([&](std::uint64_t) { return tryClass(*text, players, line.twice); }, {}, line.limit).run(0);
    print(result);
    if (line.statistics) std::cout << table(result.counts);
    return result.broken.empty() ? 0 : ruleBroken;
}

int run(const std::vector<std::string>& arguments, const Players& players) {
    const auto parsed = readCommandLine(arguments);
    if (const auto* error = std::get_if<CommandLineError>(&parsed)) {
        std::cerr << "simulate: " << error->what << "\n" << usage;
        return badInput;
    }
    const auto& line = std::get<CommandLine>(parsed);
    if (line.help) {
        std::cout << usage;
        return 0;
    }
    if (line.show) {
        std::cout << randomClass(*line.show).text();
        return 0;
    }
    return line.judge ? judge(line, players) : Simulation(line, players).run();
}

}  // namespace

int simulate(const std::vector<std::string>& arguments, const Players& players) {
    try {
        return run(arguments, players);
    } catch (const std::exception& exception) {
        std::cerr << "simulate: " << exception.what() << "\n";
        return badInput;
    }
}

}  // namespace vantrel::simulation
