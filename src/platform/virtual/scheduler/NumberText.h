#pragma once

#include <string>

#include "platform/desktop/Geometry.h"

namespace vantrel::virtualmac {

/// The shortest text that reads back the same; never with an exponent, whole numbers without a
/// decimal point.
std::string shortest(double number);

/// "x y width height".
std::string describe(const Rect& rect);

}  // namespace vantrel::virtualmac
