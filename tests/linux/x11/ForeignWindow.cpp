#include "tests/linux/x11/ForeignWindow.h"

#include <atomic>

namespace vantrel::linuxdesktop {

namespace {

// A new client gets the same first number as one that is gone. A window manager still busy with the old window would
// confuse the two.
xcb_window_t freshNumber(xcb_connection_t* connection) {
    static std::atomic<int> used = 0;
    for (int skipped = used++; skipped > 0; --skipped) xcb_generate_id(connection);
    return xcb_generate_id(connection);
}

}  // namespace

ForeignWindow::ForeignWindow(const std::string& title, const X11Rectangle& place, const std::string& type)
    : connection_(X11Connection::open()), window_(freshNumber(connection_->get())) {
    xcb_connection_t* connection = connection_->get();
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window_, connection_->root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                      static_cast<std::uint16_t>(place.width), static_cast<std::uint16_t>(place.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, connection_->atom("_NET_WM_NAME"),
                        connection_->atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()), title.data());
    setProperty("WM_PROTOCOLS", XCB_ATOM_ATOM, {connection_->atom("WM_DELETE_WINDOW")});
    setProperty("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {connection_->atom("_NET_WM_WINDOW_TYPE_" + type)});
    // WM_NORMAL_HINTS with a position chosen by the user, which window managers respect.
    constexpr std::uint32_t userPosition = 1;
    std::vector<std::uint32_t> hints(18, 0);
    hints[0] = userPosition;
    setProperty("WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS, hints);
    xcb_map_window(connection, window_);
    xcb_flush(connection);
}

ForeignWindow::~ForeignWindow() = default;

bool ForeignWindow::wasAskedToClose() {
    bool asked = false;
    const xcb_atom_t protocols = connection_->atom("WM_PROTOCOLS");
    const xcb_atom_t close = connection_->atom("WM_DELETE_WINDOW");
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.type == protocols && message.data.data32[0] == close) asked = true;
    }
    return asked;
}

void ForeignWindow::setProperty(const std::string& name, xcb_atom_t type, const std::vector<std::uint32_t>& values) {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window_, connection_->atom(name), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    xcb_flush(connection_->get());
}

void ForeignWindow::changeState(bool add, const std::string& state) {
    connection_->tellWindowManager(window_, "_NET_WM_STATE", {add ? 1U : 0U, connection_->atom(state), 0, 1});
}

void ForeignWindow::minimize() {
    constexpr std::uint32_t iconic = 3;
    connection_->tellWindowManager(window_, "WM_CHANGE_STATE", {iconic});
}

void ForeignWindow::unmap() {
    xcb_unmap_window(connection_->get(), window_);
    xcb_flush(connection_->get());
}

void ForeignWindow::destroy() {
    xcb_destroy_window(connection_->get(), window_);
    xcb_flush(connection_->get());
}

}  // namespace vantrel::linuxdesktop
