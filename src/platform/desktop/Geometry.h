#pragma once

namespace vantrel {

/// All coordinates and sizes are in points. The place of use says where the origin is: screens and views count from the
/// bottom left, window bounds and Accessibility positions from the top left of the primary display.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    Point origin;
    Size size;
    bool operator==(const Rect&) const = default;
};

}  // namespace vantrel
