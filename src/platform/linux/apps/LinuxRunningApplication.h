#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "platform/apps/RunningApplications.h"
#include "platform/linux/apps/ApplicationNames.h"
#include "platform/linux/apps/ProcessTable.h"

namespace vantrel::linuxdesktop {

class DelayedWork;
class X11Windows;

class LinuxRunningApplication final : public RunningApplication {
  public:
    /// Without a name it takes that of its executable and has no bundle identifier.
    LinuxRunningApplication(const ProcessEntry& entry, const ApplicationName& name, X11Windows& windows,
                            DelayedWork& delayedWork);

    ProcessIdentifier processIdentifier() const override { return process_; }
    std::optional<std::string> bundleIdentifier() const override;
    std::optional<std::string> localizedName() const override;
    bool isTerminated() const override;
    /// Both options do the same: they ask the window manager to activate the application's frontmost window. False if
    /// it has no window.
    bool activate(ActivationOptions options) override;
    /// Asks the windows to close, as a person would: many browsers tidy up their profile then, but not on a signal. An
    /// application without windows gets SIGTERM at once. Any other application gets it after 1.5 seconds if it still
    /// runs and the client has not ended meanwhile.
    bool terminate() override;
    /// SIGKILL.
    bool forceTerminate() override;

  private:
    /// With their start times.
    using Processes = std::vector<std::pair<ProcessIdentifier, std::uint64_t>>;
    /// Those that have its windows: itself, unless it is a script.
    Processes behind() const;

    const ProcessIdentifier process_;
    const std::uint64_t startTime_;
    const std::string bundleIdentifier_;
    const std::string name_;
    X11Windows& windows_;
    DelayedWork& delayedWork_;
};

}  // namespace vantrel::linuxdesktop
