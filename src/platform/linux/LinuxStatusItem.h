#pragma once

#include <QMenu>

#include "platform/StatusBar.h"
#include "platform/linux/MenuBuilder.h"

namespace vantrel::linuxdesktop {

/// What both kinds of status item share: the menu.
class LinuxStatusItem : public StatusItem {
  public:
    explicit LinuxStatusItem(const MenuBuilder& builder) : builder_(builder) { builder_.track(menu_); }

    void setMenu(const Menu& menu) override { builder_.fill(menu_, menu); }

    /// Takes it off the screen for good.
    virtual void remove() = 0;

  protected:
    QMenu& menu() { return menu_; }

  private:
    const MenuBuilder& builder_;
    QMenu menu_;
};

}  // namespace vantrel::linuxdesktop
