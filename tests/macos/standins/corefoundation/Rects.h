#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include "platform/desktop/Geometry.h"

namespace vantrel::standins {

inline Rect rectOf(const CGRect& rect) {
    return {{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
}

inline CGRect cgRect(const Rect& rect) {
    return CGRectMake(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

}  // namespace vantrel::standins
