#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include "platform/desktop/Geometry.h"

namespace vantrel::macos {

/// The same numbers in the other type. Coordinates are not converted.
inline Rect rectOf(const CGRect& rect) {
    return {{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
}

inline CGRect cgRect(const Rect& rect) {
    return {{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
}

}  // namespace vantrel::macos
