#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// A grabbed key that the server holds back until it is answered.
struct GrabbedKey {
    /// The number of the master keyboard; 0 if the grab does not tell.
    std::uint16_t keyboard = 0;
    xcb_keycode_t position = 0;
    bool pressed = false;
    /// X's modifiers before the key.
    std::uint32_t state = 0;
    xcb_timestamp_t time = XCB_CURRENT_TIME;
};

/// Synchronous grabs of every key on the root window. They are XInput2's, of each master keyboard. Where another client
/// holds XInput2 grabs of single keys, as GNOME's window manager does, the server refuses those but grants the core
/// protocol's, which then cover the first master keyboard. One thread at a time.
class KeyGrabs {
  public:
    KeyGrabs(X11Connection& connection, std::uint8_t extension) : connection_(connection), extension_(extension) {}

    /// False if another client grabs every key.
    bool grab();
    /// Puts these grabs above those that others have made since, without a moment between two grabs.
    void grabAgain();

    /// The key that the event is about. Empty for other events, and for those that a client has made up.
    std::optional<GrabbedKey> key(const xcb_generic_event_t& event) const;

    /// Keeps a key from the windows. The keyboard is then held until its release.
    void swallow(const GrabbedKey& key);
    /// Lets a key go to the window that has the keyboard.
    void pass(const GrabbedKey& key);

    void release();

  private:
    std::vector<std::uint16_t> masterKeyboards();
    bool grab(std::uint16_t keyboard, std::uint32_t position);
    void ungrab(std::uint16_t keyboard, std::uint32_t position);
    bool anotherClientGrabsEveryKey();
    bool grabByCore();
    void allow(const GrabbedKey& key, std::uint8_t mode, std::uint8_t coreMode);

    X11Connection& connection_;
    const std::uint8_t extension_;
    std::vector<std::uint16_t> keyboards_;
    bool core_ = false;
};

}  // namespace vantrel::linuxdesktop
