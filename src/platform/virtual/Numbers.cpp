#include "platform/virtual/Numbers.h"

#include <array>
#include <charconv>

namespace vantrel::virtualmac {

std::string shortest(double number) {
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

std::string describe(const Rect& rect) {
    return shortest(rect.origin.x) + " " + shortest(rect.origin.y) + " " + shortest(rect.size.width) + " " +
           shortest(rect.size.height);
}

}  // namespace vantrel::virtualmac
