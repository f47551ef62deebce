#include "tests/simulation/model/reading/Transcript.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace vantrel::simulation {
namespace {

constexpr std::size_t kindWidth = 11;
constexpr std::string_view furtherMark = "                        |";

std::optional<std::int64_t> millisecondsOf(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos || text.size() - point != 4) return std::nullopt;
    std::int64_t seconds = 0;
    std::int64_t thousandths = 0;
    const char* const end = text.data() + text.size();
    const auto whole = std::from_chars(text.data(), text.data() + point, seconds);
    const auto rest = std::from_chars(text.data() + point + 1, end, thousandths);
    if (whole.ptr != text.data() + point || rest.ptr != end || thousandths < 0) return std::nullopt;
    return seconds * 1000 + thousandths;
}

}  // namespace

Transcript::Transcript(std::string_view text) {
    entries_.reserve(text.size() / 60);
    further_.reserve(text.size() / 200);
    std::size_t number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        read(++number, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    for (std::size_t index = 0; index < entries_.size(); ++index) {
        const std::size_t end = index + 1 < entries_.size() ? furtherBegins_[index + 1] : further_.size();
        entries_[index].further = std::span(further_).subspan(furtherBegins_[index], end - furtherBegins_[index]);
    }
}

void Transcript::read(std::size_t number, std::string_view line) {
    if (line.starts_with(furtherMark) && !entries_.empty()) {
        line.remove_prefix(furtherMark.size());
        further_.push_back(line.substr(std::min<std::size_t>(1, line.size())));
        return;
    }
    const std::size_t timeBegins = std::min(line.find_first_not_of(' '), line.size());
    const std::size_t timeEnds = std::min(line.find(' ', timeBegins), line.size());
    const auto at = millisecondsOf(line.substr(timeBegins, timeEnds - timeBegins));
    if (!at || timeEnds < 9 || line.size() < timeEnds + 2 + kindWidth) {
        unreadable_.push_back(number);
        return;
    }
    std::string_view kind = line.substr(timeEnds + 2, kindWidth);
    kind = kind.substr(0, kind.find_last_not_of(' ') + 1);
    const std::size_t textBegins = std::min(timeEnds + 2 + kindWidth + 2, line.size());
    entries_.push_back({number, *at, kind, line.substr(textBegins), {}});
    furtherBegins_.push_back(further_.size());
}

}  // namespace vantrel::simulation
