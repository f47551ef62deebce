#include "platform/linux/statusbar/TrayAndStripStatusItem.h"

namespace vantrel::linuxdesktop {

TrayAndStripStatusItem::TrayAndStripStatusItem(const StatusBarSurroundings& surroundings)
    : tray_(surroundings.menuBuilder), strip_(surroundings, StripStatusItem::Presence::whileCovered) {}

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
