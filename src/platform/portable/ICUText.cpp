#include "platform/portable/ICUText.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <limits>

#include "platform/portable/UTF8Validity.h"

namespace vantrel {

std::string ICUText::uppercased(std::string_view bytes) const {
    std::string text = repairedUTF8(bytes);
    // ICU counts in 32 bits.
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return text;
    auto unicode = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    unicode.toUpper(icu::Locale::getRoot());
    std::string result;
    unicode.toUTF8String(result);
    return result;
}

bool ICUText::isValidUTF8(std::string_view bytes) const {
    return vantrel::isValidUTF8(bytes);
}

}  // namespace vantrel
