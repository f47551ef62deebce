#include "platform/linux/ui/WindowActivation.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

// Qt talks to the server over a connection of its own and keeps requests back for a while: the window manager is to
// hear that the window has come up before it hears that it shall have the keyboard.
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
    // A window that was hidden and is back before Qt has noticed that it lost the keyboard is no active window for Qt,
    // which therefore runs no shortcut in it, and never will be: getting the keyboard is no news then.
    if (QGuiApplication::focusWindow() == window.windowHandle() && !window.isActiveWindow()) {
        QApplication::setActiveWindow(&window);
    }
}

}  // namespace vantrel::linuxdesktop
