#include "platform/linux/statusbar/TrayAndStripStatusItem.h"

namespace vantrel::linuxdesktop {

TrayAndStripStatusItem::TrayAndStripStatusItem(const StatusBarDependencies& dependencies)
    : tray_(dependencies.menuBuilder), strip_(dependencies, StripStatusItem::Presence::whileCovered) {}

void TrayAndStripStatusItem::setButtonTitle(const std::string& title) {
    tray_.setButtonTitle(title);
    strip_.setButtonTitle(title);
}

void TrayAndStripStatusItem::setMenu(const Menu& menu) {
    tray_.setMenu(menu);
    strip_.setMenu(menu);
}

void TrayAndStripStatusItem::remove() {
    tray_.remove();
    strip_.remove();
}

}  // namespace vantrel::linuxdesktop
