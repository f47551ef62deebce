#pragma once

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <bitset>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/linux/keyboard/KeyModifiers.h"
#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Stands between the keyboard and the focused window: a synchronous XInput2 grab of every key on the root window, on a
/// connection of its own. The server holds the keyboard still after each key press until the filter has answered,
/// without a time-out of its own. One thread at a time.
///
/// The server shows a filter the key presses, and releases only while a swallowed key is down: one that is swallowed
/// keeps its release from the window as well, unless another key passed in between or, of several swallowed keys that
/// are down, the first comes up before it: with either the server's grab ends. Modifier keys arrive as flags-changed
/// events, with the flags after the change.
class KeyboardFilter {
  public:
    using Clock = std::chrono::steady_clock;
    /// True swallows the key.
    using Decide = std::function<bool(const KeyEvent&)>;

    /// Null without an X server that has XInput 2.1.
    static std::unique_ptr<KeyboardFilter> open();
    ~KeyboardFilter();

    /// Any identifier of a resource of the connection, by which another client can have it closed.
    std::uint32_t resource() const { return resource_; }

    /// False when the grab of one of the keyboards was refused: another client filters it already.
    bool grab();

    /// Readable when there is something to answer.
    int descriptor() const { return xcb_get_file_descriptor(connection_->get()); }

    /// Answers every key that waits, and grabs again where that is due: window managers renew their own key grabs when
    /// the keymap changes, and of several grabs the newest wins. Decisions are made before it returns. False when the
    /// connection is gone; then no key is held any more.
    bool answer(const Decide& decide);

    /// When answer() is to be called though nothing is readable.
    std::optional<Clock::time_point> due() const { return regrabAt_; }

    /// Ends the grabs; keys that wait are still decided. One that was swallowed and is still down lets the keyboard go
    /// with the filter.
    void release(const Decide& decide);

  private:
    KeyboardFilter(std::unique_ptr<X11Connection> connection, std::uint8_t extension);

    std::vector<std::uint16_t> masterKeyboards();
    bool grab(std::uint16_t keyboard);
    // Whether there was anything.
    bool answerQueued(const Decide& decide);
    void take(const xcb_generic_event_t& event, const Decide& decide);
    bool decidePress(xcb_keycode_t position, std::uint32_t state, const Decide& decide);
    void keyboardsChanged(const xcb_input_hierarchy_event_t& event);
    void mappingChanged();
    void grabAgainWhenDue();

    const std::unique_ptr<X11Connection> connection_;
    const std::uint8_t extension_;
    const std::uint32_t resource_;
    KeyModifiers modifiers_;
    std::vector<std::uint16_t> keyboards_;
    std::bitset<256> swallowed_;
    // By keyboard: the swallowed key whose press began a grab that is still active.
    std::map<std::uint16_t, xcb_keycode_t> holding_;
    std::optional<Clock::time_point> regrabAt_;
    bool regrabTwice_ = false;
};

}  // namespace vantrel::linuxdesktop
