#pragma once

#include "platform/apps/RunningApplications.h"
#include "platform/linux/apps/ApplicationNames.h"
#include "platform/linux/apps/ProcessTable.h"

namespace vantrel::linuxdesktop {

class DelayedWork;
class X11Windows;

class LinuxRunningApplication final : public RunningApplication {
  public:
    /// Without a name it is called after its executable and has no bundle identifier.
    LinuxRunningApplication(const ProcessEntry& entry, const ApplicationName& name, X11Windows& windows,
                            DelayedWork& delayedWork);

    ProcessIdentifier processIdentifier() const override { return process_; }
    std::optional<std::string> bundleIdentifier() const override;
    std::optional<std::string> localizedName() const override;
    bool isTerminated() const override;
    /// Both options ask the window manager alike, for the frontmost of the application's windows. False without one.
    bool activate(ActivationOptions options) override;
    /// Asks the windows to close, as a person would: many a browser tidies up its profile then, and not on a signal. An
    /// application without windows gets SIGTERM at once; one that is still there 1.5 seconds later gets it then, unless
    /// the client has ended meanwhile.
    bool terminate() override;
    /// SIGKILL.
    bool forceTerminate() override;

  private:
    const ProcessIdentifier process_;
    const std::uint64_t startTime_;
    const std::string bundleIdentifier_;
    const std::string name_;
    X11Windows& windows_;
    DelayedWork& delayedWork_;
};

}  // namespace vantrel::linuxdesktop
