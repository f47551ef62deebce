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
class StartedBundles;
class X11Windows;

/// The applications on this X display: this process, the user's processes that were started for the display and have a
/// known executable or lie in a folder `Name.app`, and every process with a window that the window manager manages.
/// Helper processes of browsers are left out, and so is a script while a process that it has started is the same
/// application: that one has the windows. But a script that was asked for by its number is the application from then
/// on, and the windows of what it starts are its windows.
class LinuxRunningApplications final : public RunningApplications {
  public:
    struct Dependencies {
        X11Connection& connection;
        X11Windows& windows;
        DelayedWork& delayedWork;
        StartedBundles& started;
    };

    /// `display` has the form of DISPLAY.
    LinuxRunningApplications(Dependencies dependencies, const std::string& display);

    /// Oldest first.
    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;

    /// The application of a window whose owner is known. Saves a search through all windows.
    std::shared_ptr<RunningApplication> ofWindow(xcb_window_t window, ProcessIdentifier owner) const;

  private:
    /// What a process was started as, where the client knows it.
    ProcessEntry asStarted(ProcessEntry entry) const;
    void readScriptsAgain(std::vector<ProcessEntry>& entries) const;
    std::optional<ProcessEntry> find(ProcessIdentifier process) const;
    /// By its executable alone. Empty if the process is no application; the name is empty if its bundle identifier is
    /// not known.
    std::optional<ApplicationName> nameOf(const ProcessEntry& entry) const;
    /// By its executable and its windows.
    std::optional<ApplicationName> nameOf(const ProcessEntry& entry, const std::vector<xcb_window_t>& windows) const;
    std::shared_ptr<RunningApplication> make(const ProcessEntry& entry,
                                             const std::optional<ApplicationName>& name) const;
    /// Processes with a window whose class belongs to that identifier, each with one such window.
    std::map<ProcessIdentifier, xcb_window_t> ownersByClass(std::string_view identifier) const;

    X11Connection& connection_;
    X11Windows& windows_;
    DelayedWork& delayedWork_;
    StartedBundles& started_;
    const std::string display_;
};

}  // namespace vantrel::linuxdesktop
