#pragma once

#include "platform/apps/FrontmostApplication.h"

namespace vantrel::linuxdesktop {

class LinuxRunningApplications;
class X11Windows;

/// The application of the window that has the focus, asked for each time. A window with an unknown owner belongs to no
/// application.
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
