#pragma once

#include <cstdint>
#include <string>

#include "platform/apps/ProcessLauncher.h"
#include "platform/desktop/Geometry.h"

namespace vantrel::virtualmac {

/// A window that another application opens. Coordinates count from the top left of the primary display.
struct NewWindow {
    /// If empty: the address that the application was started with or asked to open, or else "Nuova scheda".
    std::string title;
    Rect frame{{60, 60}, {1200, 780}};
    /// Seconds after the application was started or asked.
    double after = 0;
    /// 0 is the layer of ordinary windows. Menus, the Dock and the like are on others, and Accessibility does not list
    /// them among the windows.
    int layer = 0;
    bool hasCloseButton = true;
    /// The close button has no effect, as when a page asks whether to leave it.
    bool refusesToClose = false;
    /// The application comes to the front with it.
    bool activates = true;
};

/// The state of another application's window.
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
    /// True from the end of the transition to full screen until the end of the transition back.
    bool fullScreen = false;
    bool inTransition = false;
    /// Where it returns to from full screen.
    Rect frameBefore;
    int spaceBefore = 0;
    /// Its Space, and the one that the window list's flags still show.
    int space = 0;
    int toldSpace = 0;

    /// In full screen or on the way there, but not on the way back.
    bool ownsItsSpace() const { return fullScreen != inTransition; }
};

}  // namespace vantrel::virtualmac
