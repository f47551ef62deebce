#pragma once

#include <string>

#include "platform/keyboard/KeyboardTap.h"
#include "platform/linux/keyboard/KeyboardGuard.h"

namespace vantrel::linuxdesktop {

class MainThread;

/// Keyboard taps of an X11 desktop, one at a time: an XInput2 grab of every key that answers "swallow" or "pass" for
/// each press. The decision is made on a thread of the tap's own; reports are events of the main thread. Main thread.
///
/// Keys have the codes of their positions, whatever the layout; Super is Command. A key that exists on no Mac passes
/// unseen. Of modifiers only the press makes a flags-changed event.
///
/// Like on a Mac the keyboard never depends on a client that hangs. A main thread that does not answer within a second
/// of a key press costs the client the tap: it is told tapDisabledByTimeout and every key passes from then on. Keys do
/// not wait meanwhile, as they do on a Mac. A process that is stopped loses the tap as well, about a second after the
/// next key: a small process beside it sees to that. One that is itself stopped or has gone is replaced, some two
/// seconds after the next key.
///
/// Three things are out of reach. When both processes are stopped at once, or the second within those two seconds, the
/// server waits for a filter that does not answer, and the keyboard stands still until one of them goes on or ends.
/// And while a popup menu holds the keyboard by a grab of its own, the client's status menu or a browser's context
/// menu, X has no filter before it: keys go to that menu, unseen by the tap, and reach no window meanwhile.
/// On a desktop with several master keyboards, the keys of one that comes and goes again and again may reach no window
/// in the end, until the tap is made anew.
class LinuxKeyboardTaps final : public KeyboardTaps {
  public:
    explicit LinuxKeyboardTaps(MainThread& mainThread,
                               std::string guardExecutable = KeyboardGuard::standardExecutable());

    /// Null without XInput 2.1, without a guard, and when another client filters the keyboard.
    std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;

  private:
    MainThread& mainThread_;
    const std::string guardExecutable_;
};

}  // namespace vantrel::linuxdesktop
