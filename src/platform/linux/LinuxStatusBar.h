#pragma once

#include "platform/StatusBar.h"

namespace vantrel::linuxdesktop {

class LinuxScreens;
class MenuBuilder;
class X11Connection;
class X11Watcher;

/// The desktop's tray where there is one, for as long as there is; else each item is a strip of its own. An item must
/// not outlive the status bar. Main thread.
class LinuxStatusBar final : public StatusBar {
  public:
    LinuxStatusBar(const MenuBuilder& builder, LinuxScreens& screens, X11Connection& connection, X11Watcher& watcher)
        : builder_(builder), screens_(screens), connection_(connection), watcher_(watcher) {}

    [[nodiscard]] std::unique_ptr<StatusItem> statusItem(double length) override;
    void removeStatusItem(StatusItem& item) override;

  private:
    const MenuBuilder& builder_;
    LinuxScreens& screens_;
    X11Connection& connection_;
    X11Watcher& watcher_;
};

}  // namespace vantrel::linuxdesktop
