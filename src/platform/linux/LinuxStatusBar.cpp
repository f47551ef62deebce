#include "platform/linux/LinuxStatusBar.h"

#include <QSystemTrayIcon>

#include "platform/linux/FallbackStatusItem.h"
#include "platform/linux/MainThread.h"
#include "platform/linux/StripStatusItem.h"
#include "platform/linux/TrayAndStripStatusItem.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<StatusItem> LinuxStatusBar::statusItem(double) {
    MainThread::require("statusItem");
    const auto makeStrip = [surroundings = surroundings_] {
        return std::make_unique<StripStatusItem>(surroundings, StripStatusItem::Presence::always);
    };
    if (!QSystemTrayIcon::isSystemTrayAvailable()) return makeStrip();
    return std::make_unique<FallbackStatusItem>(std::make_unique<TrayAndStripStatusItem>(surroundings_),
                                                &QSystemTrayIcon::isSystemTrayAvailable, makeStrip);
}

void LinuxStatusBar::removeStatusItem(StatusItem& item) {
    MainThread::require("removeStatusItem");
    if (auto* own = dynamic_cast<RemovableStatusItem*>(&item)) own->remove();
}

}  // namespace vantrel::linuxdesktop
