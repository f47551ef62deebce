#include "tests/linux/x11/KeyWindow.h"

#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

KeyWindow::KeyWindow(const X11Rectangle& place) : window_("tastiera", place) {
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_change_window_attributes(connection(), id(), XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection());
}

bool KeyWindow::hasFocus() {
    const X11Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
    if (focus && focus->focus == id()) return true;
    X11Windows(window_.connection()).activate(id());
    return false;
}

const std::vector<KeyWindow::Key>& KeyWindow::pressed() {
    takeEvents();
    return pressed_;
}

const std::vector<KeyWindow::Key>& KeyWindow::released() {
    takeEvents();
    return released_;
}

std::vector<xcb_keycode_t> KeyWindow::positions() {
    std::vector<xcb_keycode_t> found;
    for (const Key& key : pressed()) found.push_back(key.position);
    return found;
}

void KeyWindow::forget() {
    takeEvents();
    pressed_.clear();
    released_.clear();
}

void KeyWindow::takeEvents() {
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection())}) {
        const std::uint8_t type = event->response_type & 0x7F;
        if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) continue;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        (type == XCB_KEY_PRESS ? pressed_ : released_).push_back({key.detail, key.state});
    }
}

}  // namespace vantrel::linuxdesktop
