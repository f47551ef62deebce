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
    std::string text = "(";
    for (const double number : {rectangle.origin.x, rectangle.origin.y, rectangle.size.width, rectangle.size.height}) {
        if (text.size() > 1) text += ", ";
        text += numberText(number);
    }
    text += ')';
    return text;
}

}  // namespace vantrel
