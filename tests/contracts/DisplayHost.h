#pragma once

#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/desktop/Screens.h"

namespace vantrel::contracts {

/// A computer on trial that has displays, seen with the participant's eyes. Coordinates are global, in points from the
/// bottom left of the primary display. Test thread.
class DisplayHost {
  public:
    virtual ~DisplayHost() = default;

    /// These are the displays from now on, the primary one first: plugged, unplugged, moved or mirrored as it takes.
    /// All together cover no more than 1200 × 800 points. Returns when the computer lists them; whoever observes the
    /// screens may be told later. The keyboard focus stays where it is.
    virtual void setDisplays(const std::vector<Screen>& displays) = 0;

    struct SeenOverlay {
        Rect frame;
        /// On the screen, though another window may cover it.
        bool shown = false;
    };
    /// The client's overlays that are not closed, in any order.
    virtual std::vector<SeenOverlay> overlays() = 0;

    /// Whether an overlay is what is seen at that point.
    virtual bool overlayIsInFrontAt(const Point& point) = 0;

    /// The titles of the client's status items, as they are shown.
    virtual std::vector<std::string> statusItems() = 0;

    /// Opens the menu of the client's only status item. Returns when it is open.
    virtual void openStatusMenu() = 0;
    virtual bool statusMenuIsOpen() = 0;

    /// Opens that menu and chooses the entry with that title. Returns when the menu has
    /// gone; what the entry does may follow later.
    virtual void chooseFromStatusMenu(const std::string& title) = 0;
};

}  // namespace vantrel::contracts
