#include "platform/linux/ui/MenuBars.h"

#include <QMenu>
#include <QMenuBar>

#include "platform/linux/ui/Appearance.h"

namespace vantrel::linuxdesktop {

void MenuBars::setMenu(const Menu& menu) {
    menu_ = menu;
    for (const auto& bar : bars_) {
        if (bar) fill(*bar);
    }
}

QMenuBar* MenuBars::add(QWidget* window) {
    if (!menu_) return nullptr;
    auto* bar = new QMenuBar(window);
    // Never in a desktop's global menu: the window's height includes the bar.
    bar->setNativeMenuBar(false);
    fill(*bar);
    std::erase_if(bars_, [](const auto& known) { return known.isNull(); });
    bars_.emplace_back(bar);
    return bar;
}

void MenuBars::fill(QMenuBar& bar) const {
    // clear() deletes actions, but not menus.
    const auto old = bar.findChildren<QMenu*>(Qt::FindDirectChildrenOnly);
    bar.clear();
    for (QMenu* menu : old) menu->deleteLater();
    if (!menu_) return;
    for (const MenuItem& item : menu_->items) {
        const std::string& title = item.title.empty() ? item.submenu.title : item.title;
        // macOS shows the application's name for a submenu without a title.
        QMenu* menu = bar.addMenu(title.empty() ? QString("Vantrel") : qtText(title).replace('&', "&&"));
        builder_.track(*menu);
        builder_.fill(*menu, item.submenu);
    }
}

}  // namespace vantrel::linuxdesktop
