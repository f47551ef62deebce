#pragma once

#include <functional>
#include <utility>

#include "platform/apps/RunningApplications.h"
#include "platform/desktop/WindowList.h"

namespace vantrel::linuxdesktop {

class X11Connection;
class X11WindowSurvey;

/// The windows that the window manager manages, with their decorations. Panels, menus and the desktop have layers of
/// their own. Unmanaged windows are not listed. Any thread.
class LinuxWindowList final : public WindowList {
  public:
    LinuxWindowList(X11Connection& connection, X11WindowSurvey& survey, const RunningApplications& applications,
                    std::function<bool()> hasDisplay)
        : connection_(connection), survey_(survey), applications_(applications), hasDisplay_(std::move(hasDisplay)) {}

    /// Empty optional if the X server is gone, or has closed the connection by which the client shows its own windows:
    /// nobody can watch anything for a person who has taken the client off the screen.
    std::optional<std::vector<WindowEntry>> copy(WindowListOption option) const override;

  private:
    X11Connection& connection_;
    X11WindowSurvey& survey_;
    const RunningApplications& applications_;
    const std::function<bool()> hasDisplay_;
};

}  // namespace vantrel::linuxdesktop
