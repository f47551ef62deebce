#pragma once

#include <memory>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"
#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel::linuxdesktop {

class FrontWindows;
class X11Watcher;

/// The top edge of a display. Notices when the pointer touches it, even over a full-screen window. Invisible. Main
/// thread.
class TopEdge {
  public:
    TopEdge(X11Connection& connection, X11Watcher& watcher, FrontWindows& front, Block onTouch);
    ~TopEdge();
    TopEdge(const TopEdge&) = delete;
    TopEdge& operator=(const TopEdge&) = delete;

    /// The display in pixels of the root window. If another display borders it from above, the edge does not stop the
    /// pointer, which moves in jumps. So the edge is thicker there.
    void lieAlong(const X11Rectangle& display, bool borderedFromAbove);

    /// While it does not listen, it takes no clicks.
    void listen(bool listens);

  private:
    X11Connection& connection_;
    FrontWindows& front_;
    const xcb_window_t window_;
    bool listens_ = false;
    std::unique_ptr<Observation> kept_;
    std::unique_ptr<Observation> touches_;
};

}  // namespace vantrel::linuxdesktop
