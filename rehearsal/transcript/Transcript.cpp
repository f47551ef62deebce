#include "rehearsal/transcript/Transcript.h"

#include <cmath>
#include <cstdint>
#include <iomanip>
#include <sstream>
#include <utility>

#include "rehearsal/transcript/PrintableText.h"

namespace vantrel::rehearsal {
namespace {

constexpr int timeColumns = 9;
constexpr int kindColumns = 11;

std::string milliseconds(double seconds) {
    const auto total = static_cast<std::int64_t>(std::llround(seconds * 1000));
    std::ostringstream text;
    text << total / 1000 << '.' << std::setw(3) << std::setfill('0') << total % 1000;
    return text.str();
}

void addFurther(std::string& lines, std::string_view text) {
    static const std::string indent = std::string(timeColumns + 2 + kindColumns + 2, ' ') + "|";
    for (std::size_t start = 0; start <= text.size();) {
        const auto end = std::min(text.find('\n', start), text.size());
        lines += indent;
        if (end > start) lines += " ";
        lines.append(text.substr(start, end - start)).append("\n");
        start = end + 1;
    }
}

}  // namespace

void Transcript::add(double seconds, std::string_view kind, std::string_view text,
                     const std::vector<std::string>& more) {
    const auto shown = printable(text);
    const auto first = shown.substr(0, shown.find('\n'));
    std::ostringstream entry;
    entry << std::setw(timeColumns) << milliseconds(seconds) << "  ";
    if (first.empty()) {
        entry << kind << "\n";
    } else {
        entry << std::setw(kindColumns) << std::left << kind << "  " << first << "\n";
    }
    std::string lines = entry.str();
    if (first.size() < shown.size()) addFurther(lines, std::string_view(shown).substr(first.size() + 1));
    for (const auto& line : more) addFurther(lines, printable(line));

    addLines(lines);
}

void Transcript::addLines(std::string_view lines) {
    const std::lock_guard guard(mutex_);
    if (held_) {
        *held_ += lines;
    } else {
        stream_ << lines;
    }
}

void Transcript::hold() {
    const std::lock_guard guard(mutex_);
    held_.emplace();
}

std::string Transcript::takeHeld() {
    const std::lock_guard guard(mutex_);
    return std::exchange(held_, std::nullopt).value_or("");
}

}  // namespace vantrel::rehearsal
