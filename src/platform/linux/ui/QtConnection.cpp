#include "platform/linux/ui/QtConnection.h"

#include <QGuiApplication>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

namespace {

xcb_connection_t* qtConnection() {
    if (qGuiApp == nullptr) return nullptr;
    const auto* qt = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return qt != nullptr ? qt->connection() : nullptr;
}

}  // namespace

void waitForQtRequests() {
    xcb_connection_t* connection = qtConnection();
    if (connection == nullptr) return;
    const X11Reply<xcb_get_input_focus_reply_t> handled(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

bool qtHasDisplay() {
    xcb_connection_t* connection = qtConnection();
    return connection != nullptr && xcb_connection_has_error(connection) == 0;
}

}  // namespace vantrel::linuxdesktop
