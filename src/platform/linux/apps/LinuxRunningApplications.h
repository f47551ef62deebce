#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/apps/RunningApplications.h"
#include "platform/linux/apps/ApplicationNames.h"
#include "platform/linux/apps/ProcessTable.h"
#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

class DelayedWork;
class X11Windows;

/// Applications are the programs of this X display: this process, the user's processes that were started for it and are
/// known by their executable or lie in a folder `Name.app`, and whatever has a window that the window manager manages.
/// Those that a browser starts beside its own are not.
class LinuxRunningApplications final : public RunningApplications {
  public:
    /// `display` as in DISPLAY.
    LinuxRunningApplications(X11Connection& connection, X11Windows& windows, DelayedWork& delayedWork,
                             const std::string& display);

    /// Oldest first.
    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;

    /// The application of a window whose owner is known: spares a walk over all windows.
    std::shared_ptr<RunningApplication> ofWindow(xcb_window_t window, ProcessIdentifier owner) const;

  private:
    /// By its executable alone; without a value when that makes no application of it. An application whose bundle
    /// identifier is not known has an empty name.
    std::optional<ApplicationName> nameOf(const ProcessEntry& entry) const;
    /// By its windows too.
    std::optional<ApplicationName> nameOf(const ProcessEntry& entry, const std::vector<xcb_window_t>& windows) const;
    std::shared_ptr<RunningApplication> make(const ProcessEntry& entry,
                                             const std::optional<ApplicationName>& name) const;
    /// The owners of windows whose class says that identifier, with one such window each.
    std::map<ProcessIdentifier, xcb_window_t> ownersByClass(std::string_view identifier) const;

    X11Connection& connection_;
    X11Windows& windows_;
    DelayedWork& delayedWork_;
    const std::string display_;
};

}  // namespace vantrel::linuxdesktop
