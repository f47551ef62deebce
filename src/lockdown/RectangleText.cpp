#include "lockdown/RectangleText.h"

#include <array>
#include <charconv>

namespace vantrel {
namespace {

std::string numberText(double number) {
    // Enough for the longest double without an exponent.
    std::array<char, 400> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed).ptr;
    std::string text(digits.data(), end);
    if (text.find_first_not_of("-0123456789") == std::string::npos) text += ".0";
    return text;
}

}  // namespace

std::string rectangleText(const Rect& rectangle) {
    return "(" + numberText(rectangle.origin.x) + ", " + numberText(rectangle.origin.y) + ", " +
           numberText(rectangle.size.width) + ", " + numberText(rectangle.size.height) + ")";
}

}  // namespace vantrel
