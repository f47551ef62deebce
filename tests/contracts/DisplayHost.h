#pragma once

#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/desktop/Screens.h"

namespace vantrel::contracts {

/// A computer under test that has displays, as the participant sees them. Coordinates are global, in points from the
/// bottom left of the primary display. Test thread.
class DisplayHost {
  public:
    virtual ~DisplayHost() = default;

    /// Sets the displays, the primary one first, by plugging, unplugging, moving or mirroring. Together they cover at
    /// most 1200 × 800 points. Returns when the computer lists them; observers may be told later. The keyboard focus
    /// does not change.
    virtual void setDisplays(const std::vector<Screen>& displays) = 0;

    struct SeenOverlay {
        Rect frame;
        /// On the screen, even if another window covers it.
        bool shown = false;
    };
    /// The client's overlays that have not been closed, in any order.
    virtual std::vector<SeenOverlay> overlays() = 0;

    /// Whether an overlay is the topmost window at that point.
    virtual bool overlayIsInFrontAt(const Point& point) = 0;

    enum class Click { left, right, middle, leftWithControl };

    /// Clicks there. The topmost window gets the click; another application's window comes to the front with it.
    virtual void clickAt(const Point& point, Click click = Click::left) = 0;

    /// The titles of the client's status items as shown.
    virtual std::vector<std::string> statusItems() = 0;

    /// Opens the menu of the client's only status item. Returns when it is open.
    virtual void openStatusMenu() = 0;
    virtual bool statusMenuIsOpen() = 0;

    /// Opens that menu and chooses the entry with that title. Returns when the menu is gone; the entry's action may
    /// follow later.
    virtual void chooseFromStatusMenu(const std::string& title) = 0;
};

}  // namespace vantrel::contracts
