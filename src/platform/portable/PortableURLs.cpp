#include "platform/portable/PortableURLs.h"

#include "platform/portable/URLGrammar.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel {

std::optional<URL> PortableURLs::form(std::string_view text) const {
    if (!isURIReference(text)) return std::nullopt;
    return URL{std::string(text)};
}

std::optional<std::string> PortableURLs::addingPercentEncodingForQuery(std::string_view text) const {
    if (!isValidUTF8(text)) return std::nullopt;
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view alsoAllowed = ":@/?";
    std::string encoded;
    for (const char character : text) {
        if (isUnreserved(character) || isSubDelimiter(character) ||
            alsoAllowed.find(character) != std::string_view::npos) {
            encoded += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            encoded += '%';
            encoded += digits[byte >> 4];
            encoded += digits[byte & 15];
        }
    }
    return encoded;
}

}  // namespace vantrel
