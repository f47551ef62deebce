#pragma once

#include <string>

#include "platform/desktop/Geometry.h"

namespace vantrel::virtualmac {

/// The shortest text that reads back as the same value, never with an exponent. Whole numbers have no decimal point.
std::string shortest(double number);

/// "x y width height".
std::string describe(const Rect& rect);

}  // namespace vantrel::virtualmac
