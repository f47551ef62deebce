#pragma once

#include "platform/apps/FrontmostApplication.h"

namespace vantrel::linuxdesktop {

class LinuxRunningApplications;
class X11Windows;

/// The application of the window that has the focus, asked afresh. A window whose owner cannot be told is nobody's.
class LinuxFrontmostApplication final : public FrontmostApplication {
  public:
    LinuxFrontmostApplication(X11Windows& windows, const LinuxRunningApplications& applications)
        : windows_(windows), applications_(applications) {}

    std::shared_ptr<RunningApplication> frontmostApplication() const override;

  private:
    X11Windows& windows_;
    const LinuxRunningApplications& applications_;
};

}  // namespace vantrel::linuxdesktop
