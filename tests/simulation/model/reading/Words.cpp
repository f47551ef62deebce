#include "tests/simulation/model/reading/Words.h"

#include <charconv>

namespace vantrel::simulation {

bool Words::skip(std::string_view piece) {
    if (!rest_.starts_with(piece)) return false;
    rest_.remove_prefix(piece.size());
    return true;
}

std::optional<std::string_view> Words::upTo(std::string_view mark) {
    const std::size_t at = rest_.find(mark);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view before = rest_.substr(0, at);
    rest_.remove_prefix(at + mark.size());
    return before;
}

std::optional<std::int64_t> Words::integer() {
    std::int64_t value = 0;
    const auto read = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    if (read.ec != std::errc{}) return std::nullopt;
    rest_.remove_prefix(static_cast<std::size_t>(read.ptr - rest_.data()));
    return value;
}

std::optional<double> Words::number() {
    double value = 0;
    const auto read = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    if (read.ec != std::errc{}) return std::nullopt;
    rest_.remove_prefix(static_cast<std::size_t>(read.ptr - rest_.data()));
    return value;
}

std::optional<std::int64_t> integerOf(std::string_view text) {
    Words words(text);
    const auto value = words.integer();
    return words.atEnd() ? value : std::nullopt;
}

}  // namespace vantrel::simulation
