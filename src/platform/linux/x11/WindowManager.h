#pragma once

namespace vantrel::linuxdesktop {

class X11Connection;

/// What the desktop's window manager can do for a class.
enum class WindowManager {
    /// None runs. Its traces may have outlived it.
    none,
    withoutFullScreen,
    withFullScreen
};

/// Whether the window manager says that it knows full screen.
bool supportsFullScreen(X11Connection& connection);

WindowManager windowManagerOf(X11Connection& connection);

}  // namespace vantrel::linuxdesktop
