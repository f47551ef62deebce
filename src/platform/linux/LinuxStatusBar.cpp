#include "platform/linux/LinuxStatusBar.h"

#include <QSystemTrayIcon>

#include "platform/linux/MainThread.h"
#include "platform/linux/StripStatusItem.h"
#include "platform/linux/TrayStatusItem.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<StatusItem> LinuxStatusBar::statusItem(double) {
    MainThread::require("statusItem");
    if (QSystemTrayIcon::isSystemTrayAvailable()) return std::make_unique<TrayStatusItem>(builder_);
    return std::make_unique<StripStatusItem>(builder_, screens_, connection_, watcher_);
}

void LinuxStatusBar::removeStatusItem(StatusItem& item) {
    MainThread::require("removeStatusItem");
    if (auto* own = dynamic_cast<LinuxStatusItem*>(&item)) own->remove();
}

}  // namespace vantrel::linuxdesktop
