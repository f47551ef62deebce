#include "practice/exchanges/TrainerPassword.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#include "practice/messages/Base64.h"

namespace vantrel::practice {

namespace {

constexpr std::string_view scheme = "basic ";

/// Empty if the header uses another scheme.
std::optional<std::string> passwordIn(const std::string& header) {
    const bool isBasic =
        header.size() > scheme.size() &&
        std::equal(scheme.begin(), scheme.end(), header.begin(), [](char wanted, char character) {
            return (character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character) == wanted;
        });
    if (!isBasic) return std::nullopt;
    const auto decoded = fromBase64(std::string_view(header).substr(scheme.size()));
    if (!decoded) return std::nullopt;
    const std::size_t colon = decoded->find(':');
    if (colon == std::string::npos) return std::nullopt;
    return decoded->substr(colon + 1);
}

/// The time depends on the length of what was given, not on how much of it is right.
bool isTheSame(std::string_view given, std::string_view kept) {
    volatile unsigned int difference = given.size() == kept.size() ? 0 : 1;
    for (std::size_t index = 0; index < given.size(); ++index) {
        const auto one = static_cast<unsigned char>(given[index]);
        const auto other = static_cast<unsigned char>(kept[index % kept.size()]);
        difference = difference | static_cast<unsigned int>(one ^ other);
    }
    return difference == 0;
}

}  // namespace

TrainerPassword::Given TrainerPassword::givenBy(const PracticeRequest& request) const {
    if (password_.empty()) return Given::right;
    const auto given = passwordIn(request.header("Authorization"));
    if (!given) return Given::none;
    return isTheSame(*given, password_) ? Given::right : Given::wrong;
}

}  // namespace vantrel::practice
