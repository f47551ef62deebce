#pragma once

#include "platform/desktop/Geometry.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"

namespace vantrel::linuxdesktop {

/// The top left of the primary display, from which window bounds and Accessibility positions count, as it is at the
/// time of construction. Any thread.
class PrimaryOrigin {
  public:
    explicit PrimaryOrigin(X11Connection& connection);

    Rect toPoints(const X11Rectangle& rectangle) const;
    /// The pixel of the root window; far outside it for a point that is too far away to be told.
    X11Rectangle toPixels(const Point& point) const;

  private:
    int x_ = 0;
    int y_ = 0;
};

}  // namespace vantrel::linuxdesktop
