#include "platform/linux/x11/WindowClasses.h"

namespace vantrel::linuxdesktop {

std::vector<std::string> windowClasses(X11Connection& connection, const std::vector<xcb_window_t>& windows) {
    constexpr std::uint32_t mostWords = 256;
    // All requests are sent before the first answer is awaited: one round trip instead of one for each window.
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        cookies.push_back(
            xcb_get_property(connection.get(), 0, window, XCB_ATOM_WM_CLASS, XCB_GET_PROPERTY_TYPE_ANY, 0, mostWords));
    }
    std::vector<std::string> classes;
    for (const xcb_get_property_cookie_t cookie : cookies) {
        const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), cookie, nullptr));
        std::string& found = classes.emplace_back();
        if (!reply || reply->format != 8) continue;
        const std::string names(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
        const std::size_t instanceEnd = names.find('\0');
        if (instanceEnd == std::string::npos) continue;
        found = names.substr(instanceEnd + 1, names.find('\0', instanceEnd + 1) - instanceEnd - 1);
    }
    return classes;
}

}  // namespace vantrel::linuxdesktop
