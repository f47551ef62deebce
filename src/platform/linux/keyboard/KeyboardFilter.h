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

#include "platform/keyboard/KeyboardTap.h"
#include "platform/linux/keyboard/KeyGrabs.h"
#include "platform/linux/keyboard/KeyModifiers.h"
#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// Stands between the keyboard and the focused window: a synchronous grab of every key on the root window, on its own
/// connection. After each key press the server holds the keyboard until the filter has answered; it has no
/// timeout for this. One thread at a time.
///
/// The filter sees key presses, and releases only while a swallowed key is down. A swallowed key's release is kept from
/// the window too, with two exceptions, because they end the server's grab: another key was passed on in between, or
/// several swallowed keys are down and the first is released before this one. Modifier keys arrive as flags-changed
/// events, with the flags after the change.
class KeyboardFilter {
  public:
    using Clock = std::chrono::steady_clock;
    /// True swallows the key.
    using Decide = std::function<bool(const KeyEvent&)>;

    /// Null if the X server is missing or lacks XInput 2.1.
    static std::unique_ptr<KeyboardFilter> open();
    ~KeyboardFilter();

    /// The identifier of some resource of the connection. With it another client can have the connection closed.
    std::uint32_t resource() const { return resource_; }

    /// False if the grab of a keyboard was refused because another client already filters it.
    bool grab() { return grabs_.grab(); }

    /// Readable when answer() has something to do.
    int descriptor() const { return xcb_get_file_descriptor(connection_->get()); }

    /// Answers every waiting key, and grabs again when that is due: window managers renew their own key grabs when the
    /// keymap changes, and the newest grab wins. Decisions are made before it returns. False if the connection is gone;
    /// then no key is held any more.
    bool answer(const Decide& decide);

    /// When to call answer() even if nothing is readable.
    std::optional<Clock::time_point> due() const { return regrabAt_; }

    /// Ends the grabs. Waiting keys are still decided. A swallowed key that is still down no longer holds the keyboard.
    void release(const Decide& decide);

  private:
    KeyboardFilter(std::unique_ptr<X11Connection> connection, std::uint8_t extension);

    // Whether there was anything to answer.
    bool answerQueued(const Decide& decide);
    void take(const xcb_generic_event_t& event, const Decide& decide);
    void answer(const GrabbedKey& key, const Decide& decide);
    bool decidePress(xcb_keycode_t position, std::uint32_t state, const Decide& decide);
    void keyboardsChanged(const xcb_input_hierarchy_event_t& event);
    void mappingChanged();
    void grabAgainWhenDue();

    const std::unique_ptr<X11Connection> connection_;
    const std::uint8_t extension_;
    const std::uint32_t resource_;
    KeyGrabs grabs_;
    KeyModifiers modifiers_;
    std::bitset<256> swallowed_;
    // For each keyboard, the swallowed key whose press began a grab that is still active.
    std::map<std::uint16_t, xcb_keycode_t> holding_;
    std::optional<Clock::time_point> regrabAt_;
    bool regrabTwice_ = false;
};

}  // namespace vantrel::linuxdesktop
