#pragma once

#include <cstdint>
#include <string>

#include "platform/apps/ProcessLauncher.h"
#include "platform/desktop/Geometry.h"

namespace vantrel::virtualmac {

/// A window that another application opens. Coordinates count from the top left of the primary display.
struct NewWindow {
    /// Empty: the address that the application was started or asked to open, else "Nuova scheda".
    std::string title;
    Rect frame{{60, 60}, {1200, 780}};
    /// Seconds after the application was started or asked.
    double after = 0;
    /// 0 is where ordinary windows lie; the others are menus, the Dock and their like, which Accessibility does not
    /// list among the windows.
    int layer = 0;
    bool hasCloseButton = true;
    /// The close button is pressed in vain, as when a page asks whether to leave it.
    bool refusesToClose = false;
    /// The application comes to the front with it.
    bool activates = true;
};

/// A window of another application, as it is.
struct AppWindow {
    std::int64_t number = 0;
    ProcessIdentifier owner = 0;
    std::string ownerName;
    std::string title;
    Rect frame;
    int layer = 0;
    bool hasCloseButton = true;
    bool refusesToClose = false;
    bool minimised = false;
    bool hidden = false;
    /// It has been in full screen since the end of the transition to it, until the end of the one back.
    bool fullScreen = false;
    bool inTransition = false;
    /// Where it goes back to from full screen.
    Rect frameBefore;
    int spaceBefore = 0;
    /// Its Space, and the one that the flags of the window list still tell.
    int space = 0;
    int toldSpace = 0;

    /// In full screen or on the way there: not on the way back.
    bool ownsItsSpace() const { return fullScreen != inTransition; }
};

}  // namespace vantrel::virtualmac
