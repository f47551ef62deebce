#pragma once

namespace vantrel::linuxdesktop {

/// Qt has its own connection to the X server and holds requests back for a while. Returns once the server has handled
/// them. Unlike QGuiApplication::sync() it runs no events: an event may end the session, and with it the window whose
/// method is waiting. Main thread.
void waitForQtRequests();

/// False once the server has closed that connection. Any thread.
bool qtHasDisplay();

}  // namespace vantrel::linuxdesktop
