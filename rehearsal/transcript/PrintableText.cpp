#include "rehearsal/transcript/PrintableText.h"

#include <nlohmann/json.hpp>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::rehearsal {
namespace {

constexpr std::size_t longest = 2'000;
constexpr std::size_t shownOfLonger = 200;
constexpr std::string_view hexDigits = "0123456789ABCDEF";

std::string hexadecimal(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += hexDigits[value / 16];
        text += hexDigits[value % 16];
    }
    return text;
}

std::string_view cut(std::string_view text, std::size_t size) {
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
    return text.substr(0, size);
}

std::string compact(std::string_view body) {
    const auto value = nlohmann::json::parse(body, nullptr, false);
    return value.is_structured() ? value.dump() : std::string(body);
}

}  // namespace

std::string printable(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto value = static_cast<unsigned char>(character);
        if (character != '\n' && (value < 0x20 || value == 0x7F)) {
            result += "\\x" + hexadecimal({&character, 1});
        } else {
            result += character;
        }
    }
    return result;
}

std::string printableBody(std::string_view body) {
    const auto length = "… (" + std::to_string(body.size()) + " bytes)";
    if (!isValidUTF8(body)) {
        const bool isLong = body.size() > longest;
        return "bytes " + hexadecimal(isLong ? body.substr(0, shownOfLonger) : body) + (isLong ? length : "");
    }
    if (body.size() > longest) return printable(cut(body, shownOfLonger)) + length;
    return printable(compact(body));
}

}  // namespace vantrel::rehearsal
