#pragma once

#include "platform/apps/RunningApplications.h"
#include "platform/desktop/WindowList.h"

namespace vantrel::linuxdesktop {

class X11Connection;
class X11WindowSurvey;

/// The windows that the window manager knows of, with their decorations. Panels, menus and the desktop lie on layers of
/// their own; what the window manager does not manage is not listed. Any thread.
class LinuxWindowList final : public WindowList {
  public:
    LinuxWindowList(X11Connection& connection, X11WindowSurvey& survey, const RunningApplications& applications)
        : connection_(connection), survey_(survey), applications_(applications) {}

    /// Empty optional when the X server has gone.
    std::optional<std::vector<WindowEntry>> copy(WindowListOption option) const override;

  private:
    X11Connection& connection_;
    X11WindowSurvey& survey_;
    const RunningApplications& applications_;
};

}  // namespace vantrel::linuxdesktop
