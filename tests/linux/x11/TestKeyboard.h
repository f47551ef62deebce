#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

// The positions of some keys that every keyboard has.
constexpr xcb_keycode_t positionOfA = 38;
constexpr xcb_keycode_t positionOfB = 56;
constexpr xcb_keycode_t positionOfQ = 24;
constexpr xcb_keycode_t positionOfW = 25;

/// Presses keys as a person would, through the server's test extension on its own connection. Returns once the server
/// has received the keys.
class TestKeyboard {
  public:
    TestKeyboard();

    void press(xcb_keycode_t position);
    void release(xcb_keycode_t position);
    /// Presses and releases.
    void type(xcb_keycode_t position);
    /// The same while modifier keys are held, given as CGEventFlags.
    void type(xcb_keycode_t position, std::uint64_t flags);

    /// The position of a Mac's key. Zero if there is none.
    static xcb_keycode_t position(std::int64_t macKeyCode);

    xcb_connection_t* connection() { return connection_->get(); }

  private:
    void send(std::uint8_t type, xcb_keycode_t position);
    void sync();

    const std::unique_ptr<X11Connection> connection_;
};

}  // namespace vantrel::linuxdesktop
