#pragma once

#include <QMenu>

#include "platform/linux/statusbar/RemovableStatusItem.h"
#include "platform/linux/ui/MenuBuilder.h"

namespace vantrel::linuxdesktop {

/// What both kinds of status item share: the menu.
class LinuxStatusItem : public RemovableStatusItem {
  public:
    explicit LinuxStatusItem(const MenuBuilder& builder) : builder_(builder) { builder_.track(menu_); }

    void setMenu(const Menu& menu) override { builder_.fill(menu_, menu); }

  protected:
    QMenu& menu() { return menu_; }

  private:
    const MenuBuilder& builder_;
    QMenu menu_;
};

}  // namespace vantrel::linuxdesktop
