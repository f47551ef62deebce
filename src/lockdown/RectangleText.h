#pragma once

#include <string>

#include "platform/desktop/Geometry.h"

namespace vantrel {

/// "(x, y, width, height)" for log lines. Each number is the shortest text that reads back as the same value, with at
/// least one decimal.
std::string rectangleText(const Rect& rectangle);

}  // namespace vantrel
