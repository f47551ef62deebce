#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/virtual/world/AppWindow.h"
#include "platform/virtual/world/SpaceTable.h"

namespace vantrel::virtualmac {

/// An application that has been in front.
struct FrontCandidate {
    ProcessIdentifier process = 0;
    std::string name = {};
    /// Whether it is told when this one comes to the front. Not, if another event shows it.
    bool isTold = true;
    bool operator==(const FrontCandidate&) const = default;
};

/// The windows of the other applications, their Spaces, and which application is in front. Plain values without time,
/// threads or events; the desktop guards it.
class DesktopState {
  public:
    static constexpr double menuBarHeight = 24;

    SpaceTable spaces;
    /// Front to back.
    std::vector<AppWindow> windows;
    /// Applications that were in front, most recent first. If empty, none is in front.
    std::vector<FrontCandidate> front;
    /// Above the windows of an application that is in front.
    bool clientWindowsAbove = false;

    /// Follows the displays: windows of a removed one move to the primary one, full-screen windows fill theirs.
    void arrange(const Displays& displays);

    AppWindow* find(std::int64_t number);
    const AppWindow* find(std::int64_t number) const;
    /// The window that the full-screen Space was made for. Null if it is gone.
    const AppWindow* ownerOf(int fullScreenSpace) const;
    /// The application's ordinary windows, front to back.
    std::vector<AppWindow> windowsOf(ProcessIdentifier process) const;
    /// Its frontmost ordinary window that is neither minimised nor hidden. Null if there is none.
    AppWindow* frontWindow(ProcessIdentifier process);
    const AppWindow* frontWindow(ProcessIdentifier process) const;
    bool isFrontmost(ProcessIdentifier process) const { return !front.empty() && front.front().process == process; }
    /// The on-screen flag of the window list.
    bool isOnScreen(const AppWindow& window) const;

    /// Opens a window in front of the others. It is on the current Space of its display, or on one of that display's
    /// desktops if that Space belongs to another application's full-screen window.
    AppWindow& open(std::int64_t number, ProcessIdentifier owner, const std::string& ownerName, const NewWindow& made);
    /// Returns the closed window. Empty if there was none. A full-screen window's Space is removed with it.
    std::optional<AppWindow> close(std::int64_t number);
    void raise(std::int64_t number);
    /// Moves the window as far as the menu bar allows. False for a full-screen window, which does not move.
    bool setFrame(AppWindow& window, const Rect& frame);
    void setHidden(ProcessIdentifier process, bool hidden);
    bool isHidden(ProcessIdentifier process) const { return hidden_.contains(process); }

    /// Brings the application to the front with its front window, and shows that window's Space if none of its windows
    /// is on a current one.
    void bringToFront(const FrontCandidate& application);
    /// The process has ended.
    void leaveFront(ProcessIdentifier process);

    /// Begins the transition to full screen: the window gets its own Space, which becomes current if the window was on
    /// the current one or its application is in front.
    void beginFullScreen(AppWindow& window);
    /// Begins the transition back: the display returns to the window's desktop if it showed the window.
    void endFullScreen(AppWindow& window);
    /// Ends the transition to or from full screen.
    void finishTransition(AppWindow& window, bool fullScreen);

    /// From now on the flags of that display's windows are correct.
    void settle(const std::string& display);

  private:
    void moveToPrimary(AppWindow& window, bool wasFullScreenSpace);
    Rect belowMenuBar(Rect frame) const;

    std::set<ProcessIdentifier> hidden_;
};

}  // namespace vantrel::virtualmac
