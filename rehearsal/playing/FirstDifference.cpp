#include "rehearsal/playing/FirstDifference.h"

#include <algorithm>

namespace vantrel::rehearsal {
namespace {

/// The line that begins there, with its line break.
std::string_view lineAt(std::string_view text, std::size_t start) {
    const auto end = text.find('\n', start);
    return text.substr(start, end == std::string_view::npos ? end : end - start + 1);
}

std::string shown(std::string_view line) {
    if (line.empty()) return "(nothing more)";
    if (line.back() != '\n') return std::string(line) + " (without a line break)";
    return std::string(line.substr(0, line.size() - 1));
}

}  // namespace

std::string firstDifference(std::string_view kept, std::string_view played) {
    std::size_t start = 0;
    for (int number = 1; start < kept.size() || start < played.size(); ++number) {
        const auto left = lineAt(kept, std::min(start, kept.size()));
        const auto right = lineAt(played, std::min(start, played.size()));
        if (left != right) {
            return "line " + std::to_string(number) + "\n  kept:   " + shown(left) + "\n  played: " + shown(right);
        }
        start += left.size();
    }
    return {};
}

}  // namespace vantrel::rehearsal
