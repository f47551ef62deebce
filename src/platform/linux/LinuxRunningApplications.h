#pragma once

#include <string>

#include "platform/RunningApplications.h"

namespace vantrel::linuxdesktop {

class X11Windows;

/// Applications are the user's processes on this X display. A process whose environment cannot be read is not ours.
class LinuxRunningApplications final : public RunningApplications {
  public:
    /// `display` as in DISPLAY.
    LinuxRunningApplications(X11Windows& windows, const std::string& display);

    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;

  private:
    X11Windows& windows_;
    const std::string display_;
};

}  // namespace vantrel::linuxdesktop
