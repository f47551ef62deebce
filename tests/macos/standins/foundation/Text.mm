#include "tests/macos/standins/foundation/Text.h"

#include "tests/macos/standins/foundation/NSError+Text.h"
#include "tests/macos/standins/foundation/NSString+Units.h"

namespace vantrel::standins {

namespace {

constexpr char32_t firstSurrogate = 0xd800;
constexpr char32_t firstLowSurrogate = 0xdc00;
constexpr char32_t afterSurrogates = 0xe000;
constexpr char32_t firstBeyondUnit = 0x10000;
constexpr char32_t afterLast = 0x110000;

bool isSurrogate(char32_t c) {
    return c >= firstSurrogate && c < afterSurrogates;
}

/// The meaning of a character's first byte.
struct Lead {
    int following;
    char32_t bits;
    char32_t least;
};

std::optional<Lead> lead(unsigned char byte) {
    if (byte < 0x80) return Lead{0, byte, 0};
    if (byte >= 0xc0 && byte < 0xe0) return Lead{1, byte & 0x1fU, 0x80};
    if (byte >= 0xe0 && byte < 0xf0) return Lead{2, byte & 0x0fU, 0x800};
    if (byte >= 0xf0 && byte < 0xf8) return Lead{3, byte & 0x07U, firstBeyondUnit};
    return std::nullopt;
}

/// Removes and returns the first character of the bytes.
std::optional<char32_t> takeCharacter(std::string_view& bytes) {
    const auto first = lead(static_cast<unsigned char>(bytes.front()));
    if (!first || bytes.size() <= static_cast<std::size_t>(first->following)) return std::nullopt;
    char32_t value = first->bits;
    for (int index = 1; index <= first->following; ++index) {
        const auto byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(index)]);
        if ((byte & 0xc0U) != 0x80) return std::nullopt;
        value = value << 6 | (byte & 0x3fU);
    }
    if (value < first->least || value >= afterLast || isSurrogate(value)) return std::nullopt;
    bytes.remove_prefix(static_cast<std::size_t>(first->following) + 1);
    return value;
}

void append(std::string& bytes, char32_t c) {
    const auto following = [&bytes, c](int shift) { bytes += static_cast<char>(0x80 | (c >> shift & 0x3f)); };
    if (c < 0x80) {
        bytes += static_cast<char>(c);
    } else if (c < 0x800) {
        bytes += static_cast<char>(0xc0 | c >> 6);
        following(0);
    } else if (c < firstBeyondUnit) {
        bytes += static_cast<char>(0xe0 | c >> 12);
        following(6);
        following(0);
    } else {
        bytes += static_cast<char>(0xf0 | c >> 18);
        following(12);
        following(6);
        following(0);
    }
}

}  // namespace

std::optional<std::u16string> utf16(std::string_view bytes) {
    std::u16string units;
    while (!bytes.empty()) {
        const auto c = takeCharacter(bytes);
        if (!c) return std::nullopt;
        if (*c < firstBeyondUnit) {
            units += static_cast<char16_t>(*c);
        } else {
            units += static_cast<char16_t>(firstSurrogate + ((*c - firstBeyondUnit) >> 10));
            units += static_cast<char16_t>(firstLowSurrogate + ((*c - firstBeyondUnit) & 0x3ff));
        }
    }
    return units;
}

std::optional<std::string> utf8(std::u16string_view units, bool isLossy) {
    std::string bytes;
    for (std::size_t index = 0; index < units.size(); ++index) {
        const char32_t unit = units[index];
        if (!isSurrogate(unit)) {
            append(bytes, unit);
            continue;
        }
        const char32_t next = index + 1 < units.size() ? units[index + 1] : 0;
        if (unit < firstLowSurrogate && next >= firstLowSurrogate && next < afterSurrogates) {
            append(bytes, firstBeyondUnit + ((unit - firstSurrogate) << 10) + (next - firstLowSurrogate));
            ++index;
        } else if (isLossy) {
            bytes += '?';
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

NSString* textOf(std::string_view bytes) {
    return [[NSString alloc] initWithBytes:bytes.data() length:bytes.size() encoding:NSUTF8StringEncoding];
}

std::string bytesOf(NSString* text) {
    if (text == nil) return {};
    return *utf8([text vantrel_units], true);
}

NSError* errorOf(NSString* domain, NSInteger code, std::string_view text) {
    NSError* error = [NSError errorWithDomain:domain code:code userInfo:nil];
    [error vantrel_setText:textOf(text)];
    return error;
}

}  // namespace vantrel::standins
