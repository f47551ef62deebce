#include "practice/configuration/SessionCode.h"

#include <algorithm>

namespace vantrel::practice {

bool isSessionCode(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || std::string_view("-._~").find(character) != std::string::npos;
    });
}

std::string upperCaseCode(std::string_view text) {
    std::string upper(text);
    for (char& character : upper) {
        if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
    }
    return upper;
}

}  // namespace vantrel::practice
