#pragma once

#include <QSystemTrayIcon>

#include "platform/linux/statusbar/LinuxStatusItem.h"

namespace vantrel::linuxdesktop {

/// A status item in the desktop's tray. Trays show icons, not texts, so the title is the tool tip.
class TrayStatusItem final : public LinuxStatusItem {
  public:
    explicit TrayStatusItem(const MenuBuilder& builder);

    void setButtonTitle(const std::string& title) override;
    void remove() override;

  private:
    QSystemTrayIcon icon_;
};

}  // namespace vantrel::linuxdesktop
