#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/threads/Observation.h"

namespace vantrel::linuxdesktop {

class X11Connection;
class X11Watcher;
class X11Windows;
class X11WindowSurvey;

/// Full screen as macOS has it: the window moves to a desktop of its own, made for it behind the others, so that going
/// there and leaving it are Space changes. When the window leaves full screen, closes or dies, the desktop is removed,
/// and a person who was there is brought back to where they came from: nobody is left on an empty desktop. A window
/// manager whose number of desktops is fixed, or a window that went full screen without us, has full screen all the
/// same, on the desktop where it is.
///
/// What stands is also written on the root window, so that a client puts right what a killed one has left.
///
/// Any thread, except construction and destruction; a call takes up to a fifth of a second, 20 ms as a rule.
class FullScreenDesktops {
  public:
    FullScreenDesktops(X11Connection& connection, X11Windows& windows, X11WindowSurvey& survey, X11Watcher& watcher);
    /// Puts back what still stands.
    ~FullScreenDesktops();
    FullScreenDesktops(const FullScreenDesktops&) = delete;
    FullScreenDesktops& operator=(const FullScreenDesktops&) = delete;

    /// Asks the window manager for it and goes there. False when it has no full screen, for this window or at all; what
    /// comes of the request is not waited for.
    bool enter(const X11WindowFacts& window);
    void leave(const X11WindowFacts& window);

    /// Takes every window that has a desktop of ours out of full screen and removes the desktops.
    void putBackAll();

  private:
    struct Own {
        xcb_window_t window = XCB_WINDOW_NONE;
        /// Numbers of windows are used again.
        ProcessIdentifier owner = 0;
        std::uint32_t desktop = 0;
        /// Where the window and the person came from.
        std::uint32_t origin = 0;
        /// The window manager has shown it there.
        bool shown = false;
    };

    bool isSupported();
    bool makeDesktop(const X11WindowFacts& window);
    void dissolve(xcb_window_t window, bool alive);
    void requestFullScreen(xcb_window_t window, bool fullScreen);
    void check();
    void adopt();
    void write();
    std::vector<Own>::iterator find(xcb_window_t window);

    X11Connection& connection_;
    X11Windows& windows_;
    X11WindowSurvey& survey_;
    X11Watcher& watcher_;
    X11Desktops desktops_;
    std::mutex mutex_;
    std::vector<Own> own_;
    std::unique_ptr<Observation> notices_;
};

}  // namespace vantrel::linuxdesktop
