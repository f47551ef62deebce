#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/linux/x11/X11Connection.h"
#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

class QSocketNotifier;

namespace vantrel::linuxdesktop {

/// Hears of changes on the root window. It has a connection of its own on which nobody waits for an answer: XCB takes
/// events in while it waits, and then the socket that wakes the event loop stays silent. Main thread,
/// where nothing else is said.
class X11Watcher {
  public:
    /// `windows`: one was opened, closed or changed its state; of states only those of windows that are watched.
    /// `pointer`: it came into a window whose pointer is watched.
    enum class Change { displays, stacking, currentDesktop, windows, pointer };

    /// Null when there is no X server to be reached.
    static std::unique_ptr<X11Watcher> open();
    ~X11Watcher();

    /// The block runs from an event, once for each notice of the server; they come in bursts.
    [[nodiscard]] std::unique_ptr<Observation> observe(Change change, Block block);

    /// Also hears of that window's changes of state. Any thread.
    void watch(xcb_window_t window);

    /// Also hears of the pointer that comes into that window. Any thread.
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
