#include "tests/linux/x11/TestPointer.h"

#include <xcb/xtest.h>

namespace vantrel::linuxdesktop {

TestPointer::TestPointer() : connection_(X11Connection::open()) {}

void TestPointer::moveTo(int x, int y) {
    send(XCB_MOTION_NOTIFY, 0, x, y);
}

void TestPointer::click(std::uint8_t button) {
    send(XCB_BUTTON_PRESS, button, 0, 0);
    send(XCB_BUTTON_RELEASE, button, 0, 0);
}

void TestPointer::clickAt(int x, int y) {
    moveTo(x, y);
    click();
}

void TestPointer::send(std::uint8_t type, std::uint8_t button, int x, int y) {
    xcb_connection_t* connection = connection_->get();
    xcb_test_fake_input(connection, type, button, XCB_CURRENT_TIME, connection_->root(), static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 0);
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace vantrel::linuxdesktop
