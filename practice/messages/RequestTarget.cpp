#include "practice/messages/RequestTarget.h"

namespace vantrel::practice {

namespace {

int hexadecimalDigit(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    return -1;
}

std::string withoutPercentEncoding(std::string_view text) {
    std::string decoded;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%' && index + 2 < text.size()) {
            const int high = hexadecimalDigit(text[index + 1]);
            const int low = hexadecimalDigit(text[index + 2]);
            if (high >= 0 && low >= 0) {
                decoded.push_back(static_cast<char>(high * 16 + low));
                index += 2;
                continue;
            }
        }
        decoded.push_back(text[index]);
    }
    return decoded;
}

}  // namespace

RequestTarget::RequestTarget(std::string_view target) {
    const std::size_t question = target.find('?');
    path_ = target.substr(0, question);
    if (question != std::string_view::npos) query_ = target.substr(question + 1);
    if (path_.empty() || path_.front() != '/') return;

    std::string_view rest = std::string_view(path_).substr(1);
    while (true) {
        const std::size_t slash = rest.find('/');
        segments_.emplace_back(rest.substr(0, slash));
        if (slash == std::string_view::npos) return;
        rest.remove_prefix(slash + 1);
    }
}

std::optional<std::string> RequestTarget::query(std::string_view name) const {
    std::string_view rest = query_;
    while (!rest.empty()) {
        const std::string_view pair = rest.substr(0, rest.find('&'));
        const std::size_t equals = pair.find('=');
        if (equals != std::string_view::npos && pair.substr(0, equals) == name) {
            return withoutPercentEncoding(pair.substr(equals + 1));
        }
        rest.remove_prefix(pair.size() < rest.size() ? pair.size() + 1 : pair.size());
    }
    return std::nullopt;
}

}  // namespace vantrel::practice
