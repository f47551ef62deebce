#include "tests/linux/statusbar/DesktopTray.h"

namespace vantrel::linuxdesktop {

DesktopTray::DesktopTray() : panel_(X11Connection::open()) {
    const xcb_window_t window = xcb_generate_id(panel_->get());
    const xcb_window_t root = panel_->root();
    const xcb_atom_t tray = panel_->atom("_NET_SYSTEM_TRAY_S0");
    xcb_create_window(panel_->get(), XCB_COPY_FROM_PARENT, window, root, -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(panel_->get(), window, tray, XCB_CURRENT_TIME);
    xcb_client_message_event_t manager{};
    manager.response_type = XCB_CLIENT_MESSAGE;
    manager.format = 32;
    manager.window = root;
    manager.type = panel_->atom("MANAGER");
    manager.data.data32[1] = tray;
    manager.data.data32[2] = window;
    xcb_send_event(panel_->get(), 0, root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&manager));
    xcb_flush(panel_->get());
}

}  // namespace vantrel::linuxdesktop
