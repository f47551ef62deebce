#include "tests/linux/x11/TestKeyboard.h"

#include <xcb/xtest.h>

#include <vector>

#include "platform/linux/keyboard/KeyPositions.h"

namespace vantrel::linuxdesktop {

TestKeyboard::TestKeyboard() : connection_(X11Connection::open()) {}

void TestKeyboard::press(xcb_keycode_t position) {
    send(XCB_KEY_PRESS, position);
    sync();
}

void TestKeyboard::release(xcb_keycode_t position) {
    send(XCB_KEY_RELEASE, position);
    sync();
}

void TestKeyboard::type(xcb_keycode_t position) {
    send(XCB_KEY_PRESS, position);
    send(XCB_KEY_RELEASE, position);
    sync();
}

void TestKeyboard::type(xcb_keycode_t position, std::uint64_t flags) {
    constexpr xcb_keycode_t leftShift = 50;
    constexpr xcb_keycode_t leftControl = 37;
    constexpr xcb_keycode_t leftAlt = 64;
    constexpr xcb_keycode_t leftSuper = 133;
    std::vector<xcb_keycode_t> held;
    if ((flags & controlFlag) != 0) held.push_back(leftControl);
    if ((flags & optionFlag) != 0) held.push_back(leftAlt);
    if ((flags & shiftFlag) != 0) held.push_back(leftShift);
    if ((flags & commandFlag) != 0) held.push_back(leftSuper);
    for (const xcb_keycode_t key : held) press(key);
    type(position);
    for (auto key = held.rbegin(); key != held.rend(); ++key) release(*key);
}

xcb_keycode_t TestKeyboard::position(std::int64_t keyCode) {
    constexpr int first = 8;
    constexpr int last = 255;
    for (int position = first; position <= last; ++position) {
        if (macKeyCode(static_cast<xcb_keycode_t>(position)) == keyCode) return static_cast<xcb_keycode_t>(position);
    }
    return 0;
}

void TestKeyboard::send(std::uint8_t type, xcb_keycode_t position) {
    xcb_test_fake_input(connection_->get(), type, position, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

void TestKeyboard::sync() {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_->get(), xcb_get_input_focus(connection_->get()), nullptr));
}

}  // namespace vantrel::linuxdesktop
