#pragma once

#include "platform/linux/statusbar/StatusBarDependencies.h"
#include "platform/ui/StatusBar.h"

namespace vantrel::linuxdesktop {

/// Uses the desktop's tray while there is one. Otherwise each item is a strip of its own. An item must not outlive the
/// status bar. Main thread.
class LinuxStatusBar final : public StatusBar {
  public:
    explicit LinuxStatusBar(const StatusBarDependencies& dependencies) : dependencies_(dependencies) {}

    [[nodiscard]] std::unique_ptr<StatusItem> statusItem(double length) override;
    void removeStatusItem(StatusItem& item) override;

  private:
    const StatusBarDependencies dependencies_;
};

}  // namespace vantrel::linuxdesktop
