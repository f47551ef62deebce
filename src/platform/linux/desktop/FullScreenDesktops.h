#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11WindowFacts.h"

namespace vantrel::linuxdesktop {

class X11Connection;
class X11Windows;
class X11WindowSurvey;

/// Full screen as on macOS. The window moves to a new desktop of its own, behind the others, so that going there and
/// leaving it are Space changes. When the window leaves full screen, closes or dies, the desktop is removed. A person
/// who is on it then goes back to the previous desktop, so nobody is left on an empty one. If the window manager's
/// number of desktops is fixed, or a window went full screen by itself, it is full screen on the desktop where it is.
///
/// The desktops are also recorded on the root window. Whoever makes such an object next takes over what a client that
/// was killed has left: its guard, or else the next client.
///
/// Any thread, except construction and destruction. A call takes up to a fifth of a second, usually 20 ms.
class FullScreenDesktops {
  public:
    struct Dependencies {
        X11Connection& connection;
        X11Windows& windows;
        X11WindowSurvey& survey;
        /// From now on check() is called when this window changes its state.
        std::function<void(xcb_window_t)> watch;
        /// What is to be kept while there is a desktop.
        std::function<std::shared_ptr<const void>()> guard;
    };

    explicit FullScreenDesktops(Dependencies dependencies);
    /// Undoes what is left.
    ~FullScreenDesktops();
    FullScreenDesktops(const FullScreenDesktops&) = delete;
    FullScreenDesktops& operator=(const FullScreenDesktops&) = delete;

    /// Asks the window manager for full screen and goes to the new desktop. False if the window manager has no full
    /// screen, or not for this window. Does not wait for the result.
    bool enter(const X11WindowFacts& window);
    void leave(const X11WindowFacts& window);

    /// Takes every window with a desktop from here out of full screen and removes the desktops.
    void putBackAll();

    /// To be called when windows were opened or closed, and when a watched one changed its state.
    void check();

  private:
    struct Own {
        xcb_window_t window = XCB_WINDOW_NONE;
        /// Needed because window numbers are reused.
        ProcessIdentifier owner = 0;
        std::uint32_t desktop = 0;
        /// The desktop that the window and the person came from.
        std::uint32_t origin = 0;
        /// The window has been seen full screen, so the window manager has done all that it was asked for.
        bool shown = false;
    };

    /// What is recorded of one desktop: the client's process, window, desktop, origin.
    using Line = std::array<std::uint32_t, 4>;

    bool makeDesktop(const X11WindowFacts& window);
    void dissolve(xcb_window_t window, bool alive);
    /// Numbers the other desktops as they are when this one has gone.
    void countWithout(const Own& gone);
    void requestFullScreen(xcb_window_t window, bool fullScreen);
    void adopt();
    void takeOverRecord();
    void write();
    /// Writes this object's lines anew, and keeps or drops those of others.
    void changeRecord(const std::function<bool(const Line&)>& keeps);
    std::vector<Own>::iterator find(xcb_window_t window);

    X11Connection& connection_;
    X11Windows& windows_;
    X11WindowSurvey& survey_;
    const std::function<void(xcb_window_t)> watch_;
    const std::function<std::shared_ptr<const void>()> guard_;
    X11Desktops desktops_;
    std::mutex mutex_;
    std::vector<Own> own_;
    std::shared_ptr<const void> guarded_;
};

}  // namespace vantrel::linuxdesktop
