#pragma once

#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/linux/x11/X11Monitors.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// The top left of the primary display at the time of construction. Window bounds and Accessibility positions count
/// from there. Any thread.
class PrimaryOrigin {
  public:
    explicit PrimaryOrigin(X11Connection& connection);
    /// Of displays that are known already.
    explicit PrimaryOrigin(const std::vector<X11Monitor>& monitors);

    Rect toPoints(const X11Rectangle& rectangle) const;
    /// The pixel of the root window. A point that is too far away gives a pixel far outside it.
    X11Rectangle toPixels(const Point& point) const;

  private:
    int x_ = 0;
    int y_ = 0;
};

}  // namespace vantrel::linuxdesktop
