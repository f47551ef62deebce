#include "platform/linux/ui/WindowActivation.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

// Qt has its own connection to the server and holds requests back for a while. The window manager must hear that the
// window is shown before it hears that it should get the keyboard.
void sendWhatQtHolds() {
    const auto* qt = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = qt != nullptr ? qt->connection() : nullptr;
    if (connection == nullptr) return;
    const X11Reply<xcb_get_input_focus_reply_t> heard(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace

void bringToFront(QWidget& window, X11Windows& windows) {
    window.raise();
    window.activateWindow();
    sendWhatQtHolds();
    windows.activate(static_cast<xcb_window_t>(window.winId()));
    // If a window was hidden and is back before Qt has noticed that it lost the keyboard, Qt does not count it as
    // active and runs no shortcuts in it. That never changes by itself: for Qt, getting the keyboard is then no change.
    if (QGuiApplication::focusWindow() == window.windowHandle() && !window.isActiveWindow()) {
        QApplication::setActiveWindow(&window);
    }
}

}  // namespace vantrel::linuxdesktop
