#include "tests/simulation/program/CommandLine.h"

#include <charconv>
#include <functional>
#include <map>

namespace vantrel::simulation {
namespace {

template <class Number>
std::optional<Number> number(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// A..B, or a single number.
std::optional<CommandLine::Numbers> numbers(const std::string& text) {
    const auto dots = text.find("..");
    const auto first = number<std::uint64_t>(text.substr(0, dots));
    const auto last = dots == std::string::npos ? first : number<std::uint64_t>(text.substr(dots + 2));
    if (!first || !last || *last < *first) return std::nullopt;
    return CommandLine::Numbers{*first, *last};
}

template <class Place, class Number>
bool put(Place& place, const std::optional<Number>& value) {
    if (value) place = *value;
    return value.has_value();
}

using Setters = std::map<std::string, std::function<bool(const std::string&)>>;

Setters setters(CommandLine& line) {
    return {
        {"--seeds", [&](const std::string& text) { return put(line.seeds, numbers(text)); }},
        {"--show", [&](const std::string& text) { return put(line.show, number<std::uint64_t>(text)); }},
        {"--judge",
         [&](const std::string& text) {
             line.judge = text;
             return !text.empty();
         }},
        {"--jobs", [&](const std::string& text) { return put(line.jobs, number<int>(text)) && line.jobs > 0; }},
        {"--shrink", [&](const std::string& text) { return put(line.shrink, number<int>(text)) && line.shrink >= 0; }},
        {"--keep",
         [&](const std::string& text) {
             line.keep = text;
             return !text.empty();
         }},
        {"--limit", [&](const std::string& text) { return put(line.limit, number<double>(text)) && line.limit > 0; }}};
}

}  // namespace

std::variant<CommandLine, CommandLineError> readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    const auto known = setters(line);
    for (std::size_t place = 0; place < arguments.size(); ++place) {
        const auto& argument = arguments[place];
        if (argument == "--help" || argument == "-h") {
            line.help = true;
        } else if (argument == "--statistics") {
            line.statistics = true;
        } else if (argument == "--twice") {
            line.twice = true;
        } else if (const auto setter = known.find(argument); setter == known.end()) {
            return CommandLineError{"unknown option " + argument};
        } else if (place + 1 == arguments.size()) {
            return CommandLineError{argument + " needs a value"};
        } else if (!setter->second(arguments[++place])) {
            return CommandLineError{argument + " does not take '" + arguments[place] + "'"};
        }
    }
    const int tasks = int(line.seeds.has_value()) + int(line.show.has_value()) + int(line.judge.has_value());
    if (tasks != 1 && !line.help) return CommandLineError{"one of --seeds, --show and --judge is needed"};
    return line;
}

}  // namespace vantrel::simulation
