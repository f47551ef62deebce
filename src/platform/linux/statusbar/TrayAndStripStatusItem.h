#pragma once

#include "platform/linux/statusbar/StripStatusItem.h"
#include "platform/linux/statusbar/TrayStatusItem.h"

namespace vantrel::linuxdesktop {

/// A status item in the tray, and a strip while the panel that the tray is on may be covered: over a full-screen
/// window, as StripStatusItem says, and for as long as an overlay is up.
class TrayAndStripStatusItem final : public RemovableStatusItem {
  public:
    explicit TrayAndStripStatusItem(const StatusBarDependencies& dependencies);

    void setButtonTitle(const std::string& title) override;
    void setMenu(const Menu& menu) override;
    void remove() override;

  private:
    TrayStatusItem tray_;
    StripStatusItem strip_;
};

}  // namespace vantrel::linuxdesktop
