#include "platform/linux/x11/WindowManager.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

namespace {

// EWMH has no word for it.
constexpr std::array<std::string_view, 1> thoseThatLoseIt{"i3"};

std::string nameOf(X11Connection& connection, xcb_window_t window) {
    constexpr std::uint32_t longest = 64;
    const auto cookie = xcb_get_property(connection.get(), 0, window, connection.atom("_NET_WM_NAME"),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), cookie, nullptr));
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

}  // namespace

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
    if (!supportsFullScreen(connection)) return WindowManager::withoutFullScreen;
    const bool losesIt = std::find(thoseThatLoseIt.begin(), thoseThatLoseIt.end(), nameOf(connection, named.front())) !=
                         thoseThatLoseIt.end();
    return losesIt ? WindowManager::losingFullScreen : WindowManager::withFullScreen;
}

}  // namespace vantrel::linuxdesktop
