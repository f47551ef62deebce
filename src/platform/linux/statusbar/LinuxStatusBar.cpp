#include "platform/linux/statusbar/LinuxStatusBar.h"

#include <QSystemTrayIcon>

#include "platform/linux/statusbar/FallbackStatusItem.h"
#include "platform/linux/statusbar/StripStatusItem.h"
#include "platform/linux/statusbar/TrayAndStripStatusItem.h"
#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<StatusItem> LinuxStatusBar::statusItem(double) {
    MainThread::require("statusItem");
    const auto makeStrip = [dependencies = dependencies_] {
        return std::make_unique<StripStatusItem>(dependencies, StripStatusItem::Presence::always);
    };
    if (!QSystemTrayIcon::isSystemTrayAvailable()) return makeStrip();
    return std::make_unique<FallbackStatusItem>(std::make_unique<TrayAndStripStatusItem>(dependencies_),
                                                &QSystemTrayIcon::isSystemTrayAvailable, makeStrip);
}

void LinuxStatusBar::removeStatusItem(StatusItem& item) {
    MainThread::require("removeStatusItem");
    if (auto* own = dynamic_cast<RemovableStatusItem*>(&item)) own->remove();
}

}  // namespace vantrel::linuxdesktop
