#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/virtual/world/AppWindow.h"
#include "platform/virtual/world/SpaceTable.h"

namespace vantrel::virtualmac {

/// An application that has been in front.
struct FrontCandidate {
    ProcessIdentifier process = 0;
    std::string name;
    bool operator==(const FrontCandidate&) const = default;
};

/// The windows of the other applications, the Spaces they lie on, and who is in front. Values and what follows from
/// them, without time, threads or events; the desktop guards it.
class DesktopState {
  public:
    static constexpr double menuBarHeight = 24;

    SpaceTable spaces;
    /// Front to back.
    std::vector<AppWindow> windows;
    /// Who was in front, most recent first; nobody when empty.
    std::vector<FrontCandidate> front;

    /// Follows the displays: windows of one that is gone move to the primary one, full-screen windows fill theirs.
    void arrange(const Displays& displays);

    AppWindow* find(std::int64_t number);
    const AppWindow* find(std::int64_t number) const;
    /// The window that the full-screen Space was made for; null when it is gone.
    const AppWindow* ownerOf(int fullScreenSpace) const;
    /// The application's ordinary windows, front to back.
    std::vector<AppWindow> windowsOf(ProcessIdentifier process) const;
    /// Its frontmost ordinary window that is neither minimised nor hidden; null when there is none.
    AppWindow* frontWindow(ProcessIdentifier process);
    const AppWindow* frontWindow(ProcessIdentifier process) const;
    bool isFrontmost(ProcessIdentifier process) const { return !front.empty() && front.front().process == process; }
    /// What the on-screen flag of the window list tells.
    bool isOnScreen(const AppWindow& window) const;

    /// Opens a window in front of the others: on the current Space of the display that it lies on, or on a desktop of
    /// it when that Space belongs to another application's full-screen window.
    AppWindow& open(std::int64_t number, ProcessIdentifier owner, const std::string& ownerName, const NewWindow& made);
    /// What was closed; empty when there was none. A full-screen window's Space goes with it.
    std::optional<AppWindow> close(std::int64_t number);
    void raise(std::int64_t number);
    /// Moves the window, as far as the menu bar lets it. A full-screen window stays where it is: false.
    bool setFrame(AppWindow& window, const Rect& frame);
    void setHidden(ProcessIdentifier process, bool hidden);

    /// The application comes to the front with its front window, and with the Space of that window when none of its
    /// windows lies on a current one.
    void bringToFront(const FrontCandidate& application);
    /// The process has ended.
    void leaveFront(ProcessIdentifier process);

    /// The transition to full screen begins: the window gets a Space of its own, which becomes current where the
    /// window was on the current one or its application is in front.
    void beginFullScreen(AppWindow& window);
    /// The transition back begins: the display goes back to the window's desktop if it showed the window.
    void endFullScreen(AppWindow& window);
    /// The transition to or from full screen has ended.
    void finishTransition(AppWindow& window, bool fullScreen);

    /// The flags of the windows on that display tell the truth from now on.
    void settle(const std::string& display);

  private:
    void moveToPrimary(AppWindow& window, bool wasFullScreenSpace);
    Rect belowMenuBar(Rect frame) const;
};

}  // namespace vantrel::virtualmac
