#include "tests/simulation/classes/WrittenClass.h"

#include <algorithm>

namespace vantrel::simulation {
namespace {

std::string list(const std::string& word, const std::vector<std::string>& entries) {
    std::string text;
    for (const auto& entry : entries) text += "    - " + entry + "\n";
    return text.empty() ? "" : "  " + word + ":\n" + text;
}

std::string block(const std::string& word, const std::vector<std::string>& lines, const std::string& lists) {
    std::string text;
    for (const auto& line : lines) text += "  " + line + "\n";
    text += lists;
    return text.empty() ? "" : "\n" + word + ":\n" + text;
}

std::string stepText(const WrittenStep& step) {
    if (step.actions.size() == 1) return "  - {at: " + secondsText(step.at) + ", " + step.actions.front() + "}\n";
    std::string text = "  - at: " + secondsText(step.at) + "\n    together:\n";
    for (const auto& action : step.actions) text += "      - {" + action + "}\n";
    return text;
}

}  // namespace

std::string WrittenClass::text() const {
    auto steps = timeline;
    std::stable_sort(steps.begin(), steps.end(), [](const auto& a, const auto& b) { return a.at < b.at; });
    std::string text = "title: " + quoted(title) + "\n";
    text +=
        block("mac", mac, list("displays", displays) + list("browsers", browsers) + list("applications", applications));
    text += block("server", server, list("sessions", sessions) + list("replies", replies));
    text += steps.empty() ? "\ntimeline: []\n" : "\ntimeline:\n";
    for (const auto& step : steps) text += stepText(step);
    return text + "\nuntil: " + secondsText(until) + "\n";
}

std::string secondsText(Milliseconds time) {
    std::string text = std::to_string(time / 1000);
    if (time % 1000 == 0) return text;
    auto digits = std::to_string(1000 + time % 1000);
    digits.front() = '.';
    return text + digits.substr(0, digits.find_last_not_of('0') + 1);
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '\n') {
            result += "\\n";
            continue;
        }
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result + '"';
}

}  // namespace vantrel::simulation
