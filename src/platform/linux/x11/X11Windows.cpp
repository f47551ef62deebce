#include "platform/linux/x11/X11Windows.h"

#include <algorithm>
#include <cstddef>
#include <map>

namespace vantrel::linuxdesktop {

namespace {

constexpr std::uint32_t onAllDesktops = 0xFFFFFFFF;

// The first number of _NET_MOVERESIZE_WINDOW. It says which of the others count, and that the position is the frame's,
// whose margins may be about to change.
constexpr std::uint32_t givesX = 1 << 8;
constexpr std::uint32_t givesY = 1 << 9;
constexpr std::uint32_t givesWidth = 1 << 10;
constexpr std::uint32_t givesHeight = 1 << 11;
constexpr std::uint32_t placed = XCB_GRAVITY_NORTH_WEST | onBehalfOfUser << 12;

}  // namespace

ProcessIdentifier X11Windows::owner(xcb_window_t window) {
    return owners({window}).front();
}

std::vector<ProcessIdentifier> X11Windows::owners(const std::vector<xcb_window_t>& windows) {
    return owners(askOwners(windows));
}

std::vector<ProcessIdentifier> X11Windows::owners(const AskedOwners& asked) {
    std::vector<ProcessIdentifier> found = realOwners(asked);
    if (owner_) std::transform(found.begin(), found.end(), found.begin(), owner_);
    return found;
}

std::vector<ProcessIdentifier> X11Windows::behind(ProcessIdentifier process) {
    std::vector<ProcessIdentifier> found = realOwners(askOwners(frontToBack()));
    std::erase_if(found, [this, process](ProcessIdentifier one) { return (owner_ ? owner_(one) : one) != process; });
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

X11Windows::AskedOwners X11Windows::askOwners(const std::vector<xcb_window_t>& windows) {
    if (windows.empty()) return {};
    std::vector<xcb_res_client_id_spec_t> specs;
    specs.reserve(windows.size());
    for (const xcb_window_t window : windows) specs.push_back({window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
    return {windows,
            xcb_res_query_client_ids(connection_.get(), static_cast<std::uint32_t>(specs.size()), specs.data())};
}

// The server's own knowledge of its clients comes first; _NET_WM_PID is only a window's claim. The server is asked
// about the client, whose number begins the numbers of all its windows.
std::vector<ProcessIdentifier> X11Windows::realOwners(const AskedOwners& asked) {
    const std::vector<xcb_window_t>& windows = asked.windows;
    std::vector<ProcessIdentifier> found(windows.size(), 0);
    xcb_connection_t* connection = connection_.get();
    const xcb_setup_t* setup = xcb_get_setup(connection);
    if (!asked.cookie || setup == nullptr) return found;
    const X11Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection, *asked.cookie, nullptr));
    const std::uint32_t clientBits = ~setup->resource_id_mask;
    std::map<std::uint32_t, ProcessIdentifier> processes;
    if (reply) {
        for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem != 0;
             xcb_res_client_id_value_next(&id)) {
            const bool holdsProcess = (id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
            if (!holdsProcess || id.data->length < sizeof(std::uint32_t)) continue;
            processes[id.data->spec.client & clientBits] =
                static_cast<ProcessIdentifier>(*xcb_res_client_id_value_value(id.data));
        }
    }
    std::vector<xcb_window_t> unknown;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto known = processes.find(windows[i] & clientBits);
        if (known != processes.end()) found[i] = known->second;
        if (found[i] == 0) unknown.push_back(windows[i]);
    }
    if (unknown.empty()) return found;
    const std::vector<ProcessIdentifier> claimed = claimedOwners(unknown);
    for (std::size_t i = 0, next = 0; i < windows.size(); ++i) {
        if (found[i] == 0) found[i] = claimed[next++];
    }
    return found;
}

std::vector<ProcessIdentifier> X11Windows::claimedOwners(const std::vector<xcb_window_t>& windows) {
    xcb_connection_t* connection = connection_.get();
    const xcb_atom_t property = connection_.atom("_NET_WM_PID");
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        cookies.push_back(xcb_get_property(connection, 0, window, property, XCB_ATOM_CARDINAL, 0, 1));
    }
    std::vector<ProcessIdentifier> claimed;
    for (const auto& cookie : cookies) {
        const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
        const bool given = reply && reply->format == 32 && xcb_get_property_value_length(reply.get()) >= 4;
        claimed.push_back(given ? *static_cast<const ProcessIdentifier*>(xcb_get_property_value(reply.get())) : 0);
    }
    return claimed;
}

std::vector<xcb_window_t> X11Windows::frontToBack() {
    AskedProperty asked = askFrontToBack();
    return frontToBack(asked);
}

AskedProperty X11Windows::askFrontToBack() {
    return {connection_, connection_.root(), "_NET_CLIENT_LIST_STACKING"};
}

std::vector<xcb_window_t> X11Windows::frontToBack(AskedProperty& asked) {
    std::vector<xcb_window_t> windows = asked.values();
    // In the order of their mapping, if the window manager has nothing better.
    if (windows.empty()) windows = connection_.values(connection_.root(), "_NET_CLIENT_LIST");
    std::reverse(windows.begin(), windows.end());
    return windows;
}

std::vector<xcb_window_t> X11Windows::listedOf(ProcessIdentifier process) {
    const std::vector<xcb_window_t> all = frontToBack();
    const std::vector<ProcessIdentifier> processes = owners(all);
    std::vector<xcb_window_t> windows;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (processes[i] == process) windows.push_back(all[i]);
    }
    return windows;
}

std::vector<xcb_window_t> X11Windows::ofProcess(ProcessIdentifier process) {
    std::vector<xcb_window_t> windows = listedOf(process);
    std::erase_if(windows, [this](xcb_window_t window) { return !frame(window); });
    return windows;
}

std::optional<xcb_window_t> X11Windows::active() {
    AskedProperty asked = askActive();
    return active(asked);
}

AskedProperty X11Windows::askActive() {
    return {connection_, connection_.root(), "_NET_ACTIVE_WINDOW"};
}

std::optional<xcb_window_t> X11Windows::active(AskedProperty& asked) {
    const auto value = asked.value();
    return value == xcb_window_t{XCB_WINDOW_NONE} ? std::nullopt : value;
}

// Most often it is the window of the last time. So its facts are asked for together with its number, and only those of
// another window after it.
std::optional<X11Windows::Active> X11Windows::activeWindow() {
    AskedProperty named = askActive();
    const xcb_window_t expected = lastActive_;
    std::optional<AskedFacts> asked;
    if (expected != XCB_WINDOW_NONE) asked = askFacts(expected);
    const auto window = active(named);
    lastActive_ = window.value_or(XCB_WINDOW_NONE);
    const auto expectedOne = asked ? facts(*asked) : std::nullopt;
    if (!window) return std::nullopt;
    return *window == expected ? expectedOne : facts(askFacts(*window));
}

X11Windows::AskedFacts X11Windows::askFacts(xcb_window_t window) {
    return {window, askFrame(window), askOwners({window})};
}

std::optional<X11Windows::Active> X11Windows::facts(const AskedFacts& asked) {
    const auto place = frame(asked.frame);
    const ProcessIdentifier process = owners(asked.owner).front();
    if (!place) return std::nullopt;
    return Active{asked.window, *place, process};
}

std::optional<X11Rectangle> X11Windows::frame(xcb_window_t window) {
    return frame(askFrame(window));
}

X11Windows::AskedFrame X11Windows::askFrame(xcb_window_t window) {
    return {xcb_get_geometry(connection_.get(), window),
            xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0)};
}

std::optional<X11Rectangle> X11Windows::frame(const AskedFrame& asked) {
    xcb_connection_t* connection = connection_.get();
    const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection, asked.size, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, asked.place, nullptr));
    if (!size || !place) return std::nullopt;
    return X11Rectangle{place->dst_x, place->dst_y, size->width, size->height};
}

void X11Windows::activate(xcb_window_t window) {
    const auto desktop = connection_.values(window, "_NET_WM_DESKTOP");
    const auto current = connection_.values(connection_.root(), "_NET_CURRENT_DESKTOP");
    if (!desktop.empty() && desktop.front() != onAllDesktops && desktop != current) {
        connection_.tellWindowManager(connection_.root(), "_NET_CURRENT_DESKTOP", {desktop.front(), XCB_CURRENT_TIME});
    }
    focus(window);
}

void X11Windows::focus(xcb_window_t window) {
    connection_.tellWindowManager(window, "_NET_ACTIVE_WINDOW", {onBehalfOfUser, XCB_CURRENT_TIME, XCB_WINDOW_NONE});
}

void X11Windows::changeState(xcb_window_t window, bool add, std::string_view state, std::string_view secondState) {
    const xcb_atom_t second = secondState.empty() ? xcb_atom_t{XCB_ATOM_NONE} : connection_.atom(secondState);
    connection_.tellWindowManager(window, "_NET_WM_STATE",
                                  {add ? 1U : 0U, connection_.atom(state), second, onBehalfOfUser});
}

void X11Windows::unmaximize(xcb_window_t window) {
    changeState(window, false, "_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT");
}

void X11Windows::move(xcb_window_t window, int x, int y) {
    constexpr std::uint32_t both = givesX | givesY;
    connection_.tellWindowManager(window, "_NET_MOVERESIZE_WINDOW",
                                  {placed | both, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)});
}

void X11Windows::resize(xcb_window_t window, int width, int height) {
    constexpr std::uint32_t both = givesWidth | givesHeight;
    connection_.tellWindowManager(
        window, "_NET_MOVERESIZE_WINDOW",
        {placed | both, 0, 0, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)});
}

void X11Windows::close(xcb_window_t window) {
    connection_.tellWindowManager(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, onBehalfOfUser});
}

}  // namespace vantrel::linuxdesktop
