#include "practice/messages/PracticeRequest.h"

#include <algorithm>

namespace vantrel::practice {

namespace {

char lowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

std::string PracticeRequest::header(std::string_view name) const {
    for (const auto& [headerName, value] : headers) {
        if (std::equal(name.begin(), name.end(), headerName.begin(), headerName.end(),
                       [](char left, char right) { return lowerCase(left) == lowerCase(right); })) {
            return value;
        }
    }
    return {};
}

}  // namespace vantrel::practice
