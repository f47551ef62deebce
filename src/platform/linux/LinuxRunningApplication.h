#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/ProcessTable.h"

namespace vantrel::linuxdesktop {

class X11Windows;

class LinuxRunningApplication final : public RunningApplication {
  public:
    LinuxRunningApplication(const ProcessEntry& entry, X11Windows& windows);

    ProcessIdentifier processIdentifier() const override { return process_; }
    std::optional<std::string> bundleIdentifier() const override;
    std::optional<std::string> localizedName() const override;
    bool isTerminated() const override;
    bool activate(ActivationOptions options) override;
    bool terminate() override;
    bool forceTerminate() override;

  private:
    bool sendSignal(int signal) const;

    const ProcessIdentifier process_;
    const std::uint64_t startTime_;
    std::string bundleIdentifier_;
    std::string name_;
    X11Windows& windows_;
};

}  // namespace vantrel::linuxdesktop
