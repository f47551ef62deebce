#pragma once

#include <string>

#include "platform/desktop/Geometry.h"

namespace vantrel {

/// "(x, y, width, height)" for log lines: each number in the shortest way that reads back the same, with at least one
/// decimal.
std::string rectangleText(const Rect& rectangle);

}  // namespace vantrel
