#pragma once

#include "platform/linux/statusbar/StripStatusItem.h"
#include "platform/linux/statusbar/TrayStatusItem.h"

namespace vantrel::linuxdesktop {

/// A status item in the tray. It is also shown as a strip while the tray's panel may be covered: over a full-screen
/// window, as in StripStatusItem, and while an overlay is shown.
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
