#pragma once

#include "platform/linux/StripStatusItem.h"
#include "platform/linux/TrayStatusItem.h"

namespace vantrel::linuxdesktop {

/// A status item in the tray, and a strip for as long as a full-screen window covers the panel that the tray is on.
class TrayAndStripStatusItem final : public RemovableStatusItem {
  public:
    explicit TrayAndStripStatusItem(const StatusBarSurroundings& surroundings);

    void setButtonTitle(const std::string& title) override;
    void setMenu(const Menu& menu) override;
    void remove() override;

  private:
    TrayStatusItem tray_;
    StripStatusItem strip_;
};

}  // namespace vantrel::linuxdesktop
