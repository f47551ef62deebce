#include "platform/portable/UTF8Validity.h"

#include <cstddef>

namespace vantrel {

namespace {

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

/// The length of the well-formed sequence at the front. 0 if there is none.
std::size_t sequenceLength(std::string_view bytes) {
    const auto at = [bytes](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned char lead = at(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes.size() < length) return 0;
    for (std::size_t index = 1; index < length; ++index) {
        if (!isContinuation(at(index))) return 0;
    }
    const unsigned char second = at(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second > 0x9F;
    const bool beyondUnicode = lead == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyondUnicode ? 0 : length;
}

}  // namespace

std::string repairedUTF8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = sequenceLength(bytes);
        text += length > 0 ? bytes.substr(0, length) : std::string_view("\uFFFD");
        bytes.remove_prefix(length > 0 ? length : 1);
    }
    return text;
}

bool isValidUTF8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = sequenceLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

}  // namespace vantrel
