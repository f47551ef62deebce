#include "tests/simulation/orders/Orders.h"

#include <charconv>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <variant>

#include "rehearsal/playing/Player.h"
#include "rehearsal/reading/FileText.h"
#include "rehearsal/reading/ScenarioReader.h"
#include "tests/simulation/model/Judgement.h"
#include "tests/simulation/orders/AllOrders.h"
#include "tests/simulation/orders/ChoiceSequence.h"

namespace vantrel::simulation {
namespace {

constexpr int ruleBroken = 1;
constexpr int badInput = 2;
constexpr int tooMany = 3;

constexpr const char* usage =
    "FILE [--most N] [--order A,B,...]\n"
    "    The file's first line says which span of seconds is permuted, and how often a thread may be interrupted at a\n"
    "    call of the platform: # orders: from 6.9 to 7.2, interruptions 1\n"
    "    --order plays one order and prints its transcript.\n"
    "Exit status: 0; 1 when a rule is broken; 2 for a bad command line or file; 3 when there are more orders than N\n"
    "(100000).\n";

struct CommandLine {
    std::string file;
    std::size_t most = 100'000;
    std::optional<AllOrders::Choices> order;
};

template <class Number>
bool read(const std::string& text, Number& place) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), place);
    return error == std::errc{} && end == text.data() + text.size();
}

bool readOrder(const std::string& text, AllOrders::Choices& choices) {
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ',');) {
        if (!read(word, choices.emplace_back())) return false;
    }
    return true;
}

std::optional<CommandLine> readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t place = 0; place < arguments.size(); ++place) {
        const auto& argument = arguments[place];
        const bool hasNext = place + 1 < arguments.size();
        if (argument == "--most" && hasNext) {
            if (!read(arguments[++place], line.most)) return std::nullopt;
        } else if (argument == "--order" && hasNext) {
            if (!readOrder(arguments[++place], line.order.emplace())) return std::nullopt;
        } else if (line.file.empty() && !argument.starts_with("-")) {
            line.file = argument;
        } else {
            return std::nullopt;
        }
    }
    return line.file.empty() ? std::nullopt : std::optional(line);
}

/// From the file's first line.
std::optional<ChoiceSequence::Span> readSpan(const std::string& text) {
    std::istringstream words(text.substr(0, text.find('\n')));
    std::string hash, name, from, to, interruptions;
    double first = 0;
    std::string last;
    int times = 0;
    words >> hash >> name >> from >> first >> to >> last >> interruptions >> times;
    double end = 0;
    const bool isRead = !words.fail() && last.ends_with(',') && read(last.substr(0, last.size() - 1), end);
    if (!isRead || hash + name + from + to + interruptions != "#orders:fromtointerruptions") return std::nullopt;
    return ChoiceSequence::Span{virtualmac::fromSeconds(first), virtualmac::fromSeconds(end), times};
}

AllOrders::Played play(const rehearsal::Scenario& scenario, const ChoiceSequence::Span& span,
                       const AllOrders::Choices& choices) {
    const auto sequence = std::make_shared<ChoiceSequence>(span, choices);
    std::ostringstream transcript;
    rehearsal::play(scenario, transcript, {.choices = sequence});
    return {transcript.str(), sequence->alternatives()};
}

std::string orderText(const AllOrders::Choices& choices) {
    std::string text;
    for (const auto choice : choices) text += (text.empty() ? "" : ",") + std::to_string(choice);
    return text.empty() ? "0" : text;
}

int playAll(const CommandLine& line, const std::string& text, const rehearsal::Scenario& scenario,
            const ChoiceSequence::Span& span) {
    bool isBroken = false;
    AllOrders all([&](const AllOrders::Choices& choices) { return play(scenario, span, choices); }, line.most);
    const auto count = all.explore([&](const AllOrders::Choices& choices, const std::string& transcript) {
        auto broken = brokenRules(text, transcript);
        if (transcript.find("  misuse       ") != std::string::npos) {
            broken.push_back({"The client does not misuse its platform", 0, "the transcript says how"});
        }
        for (const auto& [rule, place, why] : broken) {
            isBroken = true;
            std::cout << "order " << orderText(choices) << ": " << rule << " (line " << place << "): " << why << "\n"
                      << "  again: script/orders " << line.file << " --order " << orderText(choices) << "\n";
        }
    });
    std::cout << (isBroken         ? "not all "
                  : count.complete ? "all "
                                   : "the first ")
              << count.orders << " orders hold; " << count.transcripts << " different transcripts; after "
              << count.reduced << " orders nothing was permuted again\n";
    if (isBroken) return ruleBroken;
    return count.complete ? 0 : tooMany;
}

}  // namespace

int orders(const std::vector<std::string>& arguments) {
    const auto line = readCommandLine(arguments);
    if (!line) {
        std::cerr << usage;
        return badInput;
    }
    const auto text = rehearsal::fileText(line->file);
    const auto span = text ? readSpan(*text) : std::nullopt;
    if (!span) {
        std::cerr << line->file << ":1: the file cannot be read, or its first line tells no span\n" << usage;
        return badInput;
    }
    const auto read = rehearsal::readScenario(*text, {});
    if (const auto* problems = std::get_if<rehearsal::Problems>(&read)) {
        for (const auto& problem : *problems) {
            std::cerr << line->file << ":" << problem.line << ": " << problem.what << "\n";
        }
        return badInput;
    }
    const auto& scenario = std::get<rehearsal::Scenario>(read);
    if (!line->order) return playAll(*line, *text, scenario, *span);
    std::cout << play(scenario, *span, *line->order).transcript;
    return 0;
}

}  // namespace vantrel::simulation
