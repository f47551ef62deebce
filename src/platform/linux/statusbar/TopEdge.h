#pragma once

#include <memory>

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Rectangle.h"
#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel::linuxdesktop {

class FrontWindows;
class X11Watcher;

/// The top edge of a display: hears of the pointer that touches it, also over a full-screen window. Nothing is seen of
/// it. Main thread.
class TopEdge {
  public:
    TopEdge(X11Connection& connection, X11Watcher& watcher, FrontWindows& front, Block onTouch);
    ~TopEdge();
    TopEdge(const TopEdge&) = delete;
    TopEdge& operator=(const TopEdge&) = delete;

    /// The display in pixels of the root window. Where another display borders it from above nothing stops the pointer
    /// at the edge, and it passes in leaps: there the edge is thicker.
    void lieAlong(const X11Rectangle& display, bool borderedFromAbove);

    /// It takes no clicks away from anybody while it does not listen.
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
