#pragma once

#include <QPointer>
#include <optional>
#include <vector>

#include "platform/linux/ui/MenuBuilder.h"

class QMenuBar;
class QWidget;

namespace vantrel::linuxdesktop {

/// The main menu. Without a menu bar across the screen every window shows it in a bar of its own. Main thread.
class MenuBars {
  public:
    explicit MenuBars(const MenuBuilder& builder) : builder_(builder) {}

    void setMenu(const Menu& menu);

    /// A bar in a window, which then owns it; null while there is no main menu.
    QMenuBar* add(QWidget* window);

  private:
    void fill(QMenuBar& bar) const;

    const MenuBuilder& builder_;
    std::optional<Menu> menu_;
    std::vector<QPointer<QMenuBar>> bars_;
};

}  // namespace vantrel::linuxdesktop
