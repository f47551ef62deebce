#pragma once

#include "platform/desktop/Geometry.h"

namespace vantrel {

/// How a window differs from one that fills the screen.
struct WindowDeviation {
    /// Away from the screen's origin by more than 1 % of the screen in either direction.
    bool moved = false;
    /// At least 0.9 of the screen's width and 0.8 of its height.
    bool sizeCorrect = true;
    double widthRatio = 0;
    double heightRatio = 0;

    bool isNone() const { return !moved && sizeCorrect; }
};

/// The window's position counts from the top left, the screen's from the bottom left. They are compared without
/// conversion.
WindowDeviation windowDeviation(const Rect& window, const Rect& screen);

}  // namespace vantrel
