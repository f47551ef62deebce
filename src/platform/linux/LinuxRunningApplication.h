#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/ApplicationNames.h"
#include "platform/linux/ProcessTable.h"

namespace vantrel::linuxdesktop {

class X11Windows;

class LinuxRunningApplication final : public RunningApplication {
  public:
    /// Without a name it is called after its executable and has no bundle identifier.
    LinuxRunningApplication(const ProcessEntry& entry, const ApplicationName& name, X11Windows& windows);

    ProcessIdentifier processIdentifier() const override { return process_; }
    std::optional<std::string> bundleIdentifier() const override;
    std::optional<std::string> localizedName() const override;
    bool isTerminated() const override;
    /// Both options ask the window manager alike, for the frontmost of the application's windows. False without one.
    bool activate(ActivationOptions options) override;
    /// Asks the windows to close and sends SIGTERM.
    bool terminate() override;
    /// SIGKILL.
    bool forceTerminate() override;

  private:
    bool sendSignal(int signal) const;

    const ProcessIdentifier process_;
    const std::uint64_t startTime_;
    const std::string bundleIdentifier_;
    const std::string name_;
    X11Windows& windows_;
};

}  // namespace vantrel::linuxdesktop
