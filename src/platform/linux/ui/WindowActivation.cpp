#include "platform/linux/ui/WindowActivation.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "platform/linux/ui/QtConnection.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

void bringToFront(QWidget& window, X11Windows& windows) {
    window.raise();
    window.activateWindow();
    // The window manager must hear that the window is shown before it hears that it should get the keyboard.
    waitForQtRequests();
    windows.activate(static_cast<xcb_window_t>(window.winId()));
    // If a window was hidden and is back before Qt has noticed that it lost the keyboard, Qt does not count it as
    // active and runs no shortcuts in it. That never changes by itself: for Qt, getting the keyboard is then no change.
    if (QGuiApplication::focusWindow() == window.windowHandle() && !window.isActiveWindow()) {
        QApplication::setActiveWindow(&window);
    }
}

}  // namespace vantrel::linuxdesktop
