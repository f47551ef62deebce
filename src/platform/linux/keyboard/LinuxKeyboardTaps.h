#pragma once

#include "platform/keyboard/KeyboardTap.h"

namespace vantrel::linuxdesktop {

class GuardSource;
class MainThread;

/// Keyboard taps of an X11 desktop, one at a time: a grab of every key that answers "swallow" or "pass" for
/// each press. The tap's own thread makes the decision; reports are events on the main thread. Main thread.
///
/// Keys have the codes of their positions, whatever the layout; Super is Command. A key that exists on no Mac passes
/// unseen. A modifier makes a flags-changed event only when it is pressed.
///
/// As on a Mac, the keyboard never depends on a client that hangs. If the main thread does not answer within a second
/// of a key press, the client loses the tap: it gets tapDisabledByTimeout and every key passes from then on. Unlike on
/// a Mac, keys do not wait meanwhile. A stopped process loses the tap too, about a second after the stop or the next
/// key: two small processes beside it take care of that, each of them alone if need be.
///
/// There are two limits. While a popup menu holds the keyboard by its own grab (the client's status menu or a browser's
/// context menu), X allows no filter before it: keys go to that menu, unseen by the tap, and reach no window. On a
/// desktop with several master keyboards, the keys of one that comes and goes again and again may in the end reach no
/// window until the tap is created again.
class LinuxKeyboardTaps final : public KeyboardTaps {
  public:
    LinuxKeyboardTaps(MainThread& mainThread, GuardSource& guards) : mainThread_(mainThread), guards_(guards) {}

    /// Null without XInput 2.1, without a guard, and if another client filters the keyboard.
    std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;

  private:
    MainThread& mainThread_;
    GuardSource& guards_;
};

}  // namespace vantrel::linuxdesktop
