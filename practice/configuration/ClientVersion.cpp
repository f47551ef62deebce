#include "practice/configuration/ClientVersion.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace vantrel::practice {

std::optional<ClientVersion> ClientVersion::parse(std::string_view text) {
    std::string_view rest = text.substr(0, text.find('-'));
    ClientVersion version;
    while (true) {
        const std::string_view digits = rest.substr(0, rest.find('.'));
        if (digits.empty() || digits.front() < '0' || digits.front() > '9') return std::nullopt;
        int number = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
        version.numbers_.push_back(number);
        if (digits.size() == rest.size()) return version;
        rest.remove_prefix(digits.size() + 1);
    }
}

std::strong_ordering ClientVersion::operator<=>(const ClientVersion& other) const {
    const std::size_t count = std::max(numbers_.size(), other.numbers_.size());
    for (std::size_t index = 0; index < count; ++index) {
        const int mine = index < numbers_.size() ? numbers_[index] : 0;
        const int theirs = index < other.numbers_.size() ? other.numbers_[index] : 0;
        if (mine != theirs) return mine <=> theirs;
    }
    return std::strong_ordering::equal;
}

bool ClientVersion::operator==(const ClientVersion& other) const {
    return std::is_eq(*this <=> other);
}

}  // namespace vantrel::practice
