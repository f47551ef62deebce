#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

#include "tests/linux/x11/ForeignWindow.h"

namespace vantrel::linuxdesktop {

/// A window of another X client that records the keys typed into it. One thread.
class KeyWindow {
  public:
    struct Key {
        xcb_keycode_t position = 0;
        /// X's modifiers before the key.
        std::uint16_t state = 0;
        bool operator==(const Key&) const = default;
    };

    /// Opens the window without waiting; see hasFocus().
    explicit KeyWindow(const X11Rectangle& place = {200, 200, 400, 300});

    /// Whether it has the keyboard. If not, asks the window manager for it.
    bool hasFocus();

    /// Reads what has arrived. Returns all keys so far.
    const std::vector<Key>& pressed();
    const std::vector<Key>& released();
    /// The positions pressed so far.
    std::vector<xcb_keycode_t> positions();

    void forget();

    xcb_window_t id() const { return window_.id(); }
    xcb_connection_t* connection() { return window_.connection().get(); }

  private:
    void takeEvents();

    ForeignWindow window_;
    std::vector<Key> pressed_;
    std::vector<Key> released_;
};

}  // namespace vantrel::linuxdesktop
