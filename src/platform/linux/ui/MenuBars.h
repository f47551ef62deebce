#pragma once

#include <QPointer>
#include <optional>
#include <vector>

#include "platform/linux/ui/MenuBuilder.h"

class QMenuBar;
class QWidget;

namespace vantrel::linuxdesktop {

/// The main menu. There is no menu bar across the screen, so every window shows it in its own bar. Main thread.
class MenuBars {
  public:
    explicit MenuBars(const MenuBuilder& builder) : builder_(builder) {}

    void setMenu(const Menu& menu);

    /// Adds a bar to a window, which then owns it. Null while there is no main menu.
    QMenuBar* add(QWidget* window);

  private:
    void fill(QMenuBar& bar) const;

    const MenuBuilder& builder_;
    std::optional<Menu> menu_;
    std::vector<QPointer<QMenuBar>> bars_;
};

}  // namespace vantrel::linuxdesktop
