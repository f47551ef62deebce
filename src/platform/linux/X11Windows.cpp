#include "platform/linux/X11Windows.h"

#include <xcb/res.h>

namespace vantrel::linuxdesktop {

namespace {

// EWMH's source indication 2: on behalf of the user, as a pager asks. With 1 a window manager may hold the client's end
// screen back behind the browser to protect what the user was typing.
constexpr std::uint32_t onBehalfOfUser = 2;
constexpr std::uint32_t onAllDesktops = 0xFFFFFFFF;

}  // namespace

// The server's own knowledge of its clients; _NET_WM_PID is only what the window claims.
ProcessIdentifier X11Windows::owner(xcb_window_t window) {
    const xcb_res_client_id_spec_t asked{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(connection_.get(), 1, &asked);
    const X11Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection_.get(), cookie, nullptr));
    if (!reply) return 0;
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem != 0; xcb_res_client_id_value_next(&id)) {
        const bool holdsProcess = (id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (holdsProcess && id.data->length >= sizeof(std::uint32_t)) {
            return static_cast<ProcessIdentifier>(*xcb_res_client_id_value_value(id.data));
        }
    }
    return 0;
}

std::vector<xcb_window_t> X11Windows::ofProcess(ProcessIdentifier process) {
    const std::vector<xcb_window_t> stacking = connection_.values(connection_.root(), "_NET_CLIENT_LIST_STACKING");
    std::vector<xcb_window_t> windows;
    for (auto window = stacking.rbegin(); window != stacking.rend(); ++window) {
        if (owner(*window) == process) windows.push_back(*window);
    }
    return windows;
}

std::optional<xcb_window_t> X11Windows::active() {
    const auto value = connection_.values(connection_.root(), "_NET_ACTIVE_WINDOW");
    if (value.empty() || value.front() == XCB_WINDOW_NONE) return std::nullopt;
    return value.front();
}

std::optional<X11Rectangle> X11Windows::frame(xcb_window_t window) {
    xcb_connection_t* connection = connection_.get();
    const auto sizeCookie = xcb_get_geometry(connection, window);
    const auto placeCookie = xcb_translate_coordinates(connection, window, connection_.root(), 0, 0);
    const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection, sizeCookie, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    if (!size || !place) return std::nullopt;
    return X11Rectangle{place->dst_x, place->dst_y, size->width, size->height};
}

void X11Windows::activate(xcb_window_t window) {
    const auto desktop = connection_.values(window, "_NET_WM_DESKTOP");
    const auto current = connection_.values(connection_.root(), "_NET_CURRENT_DESKTOP");
    if (!desktop.empty() && desktop.front() != onAllDesktops && desktop != current) {
        connection_.tellWindowManager(connection_.root(), "_NET_CURRENT_DESKTOP", {desktop.front(), XCB_CURRENT_TIME});
    }
    connection_.tellWindowManager(window, "_NET_ACTIVE_WINDOW", {onBehalfOfUser, XCB_CURRENT_TIME, XCB_WINDOW_NONE});
}

void X11Windows::close(xcb_window_t window) {
    connection_.tellWindowManager(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, onBehalfOfUser});
}

}  // namespace vantrel::linuxdesktop
