#include "platform/linux/statusbar/TrayStatusItem.h"

#include <QCursor>

#include "platform/linux/threads/MainThread.h"
#include "platform/linux/ui/AlertIcon.h"
#include "platform/linux/ui/Appearance.h"

namespace vantrel::linuxdesktop {

TrayStatusItem::TrayStatusItem(const MenuBuilder& builder) : LinuxStatusItem(builder) {
    icon_.setIcon(QIcon(applicationIcon(64)));
    icon_.setContextMenu(&menu());
    QObject::connect(&icon_, &QSystemTrayIcon::activated, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) menu().popup(QCursor::pos());
    });
    icon_.show();
}

void TrayStatusItem::setButtonTitle(const std::string& title) {
    MainThread::require("setButtonTitle");
    icon_.setToolTip(qtText(title));
    menu().setAccessibleName(qtText(title));
}

void TrayStatusItem::remove() {
    MainThread::require("remove");
    menu().hide();
    icon_.hide();
}

}  // namespace vantrel::linuxdesktop
