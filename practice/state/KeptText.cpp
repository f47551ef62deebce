#include "practice/state/KeptText.h"

namespace vantrel::practice {

std::string keptText(std::string text, std::size_t longest) {
    if (text.size() <= longest) return text;
    // A byte 10xxxxxx continues a character that began before it.
    while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0U) == 0x80U) --longest;
    text.resize(longest);
    // Frees the memory of what was cut off.
    text.shrink_to_fit();
    return text;
}

}  // namespace vantrel::practice
