#pragma once

namespace vantrel::linuxdesktop {

class X11Connection;

/// What the desktop's window manager can do for a class.
enum class WindowManager {
    /// None runs. Its traces may have outlived it.
    none,
    withoutFullScreen,
    /// A window loses its full screen as soon as another one gets the keyboard, and never gets it back by itself.
    losingFullScreen,
    withFullScreen
};

/// Whether the window manager says that it knows full screen.
bool supportsFullScreen(X11Connection& connection);

WindowManager windowManagerOf(X11Connection& connection);

}  // namespace vantrel::linuxdesktop
