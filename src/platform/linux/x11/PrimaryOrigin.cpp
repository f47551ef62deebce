#include "platform/linux/x11/PrimaryOrigin.h"

#include <algorithm>
#include <cmath>

namespace vantrel::linuxdesktop {

namespace {

int toPixel(double points) {
    // The limit of the X protocol.
    constexpr double furthest = 32767;
    return static_cast<int>(std::lround(std::clamp(points, -furthest, furthest)));
}

}  // namespace

PrimaryOrigin::PrimaryOrigin(X11Connection& connection) : PrimaryOrigin(X11Monitors(connection).all()) {}

PrimaryOrigin::PrimaryOrigin(const std::vector<X11Monitor>& monitors) {
    if (monitors.empty()) return;
    x_ = monitors.front().frame.x;
    y_ = monitors.front().frame.y;
}

Rect PrimaryOrigin::toPoints(const X11Rectangle& rectangle) const {
    return {{static_cast<double>(rectangle.x - x_), static_cast<double>(rectangle.y - y_)},
            {static_cast<double>(rectangle.width), static_cast<double>(rectangle.height)}};
}

X11Rectangle PrimaryOrigin::toPixels(const Point& point) const {
    return {toPixel(point.x + x_), toPixel(point.y + y_), 0, 0};
}

}  // namespace vantrel::linuxdesktop
