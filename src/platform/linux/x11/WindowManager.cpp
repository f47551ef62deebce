#include "platform/linux/x11/WindowManager.h"

#include <algorithm>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

bool supportsFullScreen(X11Connection& connection) {
    const auto supported = connection.values(connection.root(), "_NET_SUPPORTED");
    return std::find(supported.begin(), supported.end(), connection.atom("_NET_WM_STATE_FULLSCREEN")) !=
           supported.end();
}

// The root names a window of the window manager, which names itself. A number that was left on the root does not.
WindowManager windowManagerOf(X11Connection& connection) {
    constexpr const char* check = "_NET_SUPPORTING_WM_CHECK";
    const auto named = connection.values(connection.root(), check);
    if (named.empty() || connection.values(named.front(), check) != named) return WindowManager::none;
    const auto supported = connection.values(connection.root(), "_NET_SUPPORTED");
    const bool fullScreen =
        std::find(supported.begin(), supported.end(), connection.atom("_NET_WM_STATE_FULLSCREEN")) != supported.end();
    return fullScreen ? WindowManager::withFullScreen : WindowManager::withoutFullScreen;
}

}  // namespace vantrel::linuxdesktop
