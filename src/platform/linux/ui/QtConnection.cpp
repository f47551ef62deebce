#include "platform/linux/ui/QtConnection.h"

#include <QGuiApplication>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

void waitForQtRequests() {
    if (qGuiApp == nullptr) return;
    const auto* qt = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = qt != nullptr ? qt->connection() : nullptr;
    if (connection == nullptr) return;
    const X11Reply<xcb_get_input_focus_reply_t> handled(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace vantrel::linuxdesktop
