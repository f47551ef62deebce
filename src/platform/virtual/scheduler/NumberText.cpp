#include "platform/virtual/scheduler/NumberText.h"

#include <array>
#include <charconv>

namespace vantrel::virtualmac {

std::string shortest(double number) {
    // The smallest number takes 326 characters.
    std::array<char, 400> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

std::string describe(const Rect& rect) {
    return shortest(rect.origin.x) + " " + shortest(rect.origin.y) + " " + shortest(rect.size.width) + " " +
           shortest(rect.size.height);
}

}  // namespace vantrel::virtualmac
