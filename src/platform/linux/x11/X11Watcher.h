#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

class QSocketNotifier;

namespace vantrel::linuxdesktop {

/// Listens for changes on the root window. It has its own connection, on which nobody waits for a reply: while XCB
/// waits it also reads events, and then the socket that wakes the event loop stays silent. Main thread, except where
/// noted.
class X11Watcher {
  public:
    /// `windows`: one was opened or closed, or a watched window changed its state. `pointer`: it entered a window whose
    /// pointer is watched.
    enum class Change { displays, stacking, currentDesktop, windows, pointer };

    /// Null if no X server can be reached.
    static std::unique_ptr<X11Watcher> open();
    ~X11Watcher();

    /// The block runs in an event, once for each notification of the server. Notifications come in bursts.
    [[nodiscard]] std::unique_ptr<Observation> observe(Change change, Block block);

    /// Also reports that window's changes of state. Any thread.
    void watch(xcb_window_t window);

    /// Also reports when the pointer enters that window. Any thread.
    void watchPointer(xcb_window_t window);

  private:
    struct Observer;
    class Removal;

    explicit X11Watcher(std::unique_ptr<X11Connection> connection);

    void select();
    void select(xcb_window_t window, std::uint32_t events);
    void readEvents();
    void tell(Change change);

    std::unique_ptr<X11Connection> connection_;
    const xcb_atom_t currentDesktop_;
    const xcb_atom_t clientList_;
    const xcb_atom_t windowState_;
    std::uint8_t firstDisplayEvent_ = 0;
    std::vector<std::shared_ptr<Observer>> observers_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace vantrel::linuxdesktop
