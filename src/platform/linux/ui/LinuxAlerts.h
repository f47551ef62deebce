#pragma once

#include "platform/ui/Alerts.h"

namespace vantrel::linuxdesktop {

class LinuxScreens;
class RunLoopModes;
class X11Windows;

class LinuxAlerts final : public Alerts {
  public:
    LinuxAlerts(RunLoopModes& modes, LinuxScreens& screens, X11Windows& windows)
        : modes_(modes), screens_(screens), windows_(windows) {}

    /// If the application ends under the alert but the process does not, the answer is that of Escape.
    std::size_t runModal(const Alert& alert) override;

  private:
    RunLoopModes& modes_;
    LinuxScreens& screens_;
    X11Windows& windows_;
};

}  // namespace vantrel::linuxdesktop
