#include "platform/linux/ui/LinuxAlerts.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>

#include "platform/linux/desktop/LinuxScreens.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/threads/RunLoopModes.h"
#include "platform/linux/ui/AlertDialog.h"
#include "platform/linux/ui/WindowActivation.h"

namespace vantrel::linuxdesktop {

std::size_t LinuxAlerts::runModal(const Alert& alert) {
    MainThread::require("runModal");
    AlertDialog dialog(alert);
    dialog.adjustSize();
    const X11Rectangle screen = screens_.mainFrame();
    dialog.move(screen.x + (screen.width - dialog.width()) / 2,
                screen.y + std::max(0, (screen.height - dialog.height()) / 3));

    bool answered = false;
    QObject::connect(&dialog, &QDialog::finished, [&answered] { answered = true; });
    // After it is on the screen: otherwise a full-screen browser in front would cover it and keep the keys.
    QTimer::singleShot(0, &dialog, [this, &dialog] { bringToFront(dialog, windows_); });
    int result = 0;
    {
        const RunLoopModes::Stay modal(modes_);
        result = dialog.exec();
    }
    if (!answered || result < 0) return dialog.indexWithoutAnswer();
    return static_cast<std::size_t>(result);
}

}  // namespace vantrel::linuxdesktop
