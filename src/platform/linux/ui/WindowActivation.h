#pragma once

class QWidget;

namespace vantrel::linuxdesktop {

class X11Windows;

/// Brings a window of this process to the front and gives it the keyboard, even if it has only just been shown. The
/// request is made on the user's behalf: a window manager may decline Qt's own request in favour of the window that had
/// the keyboard last. Main thread.
void bringToFront(QWidget& window, X11Windows& windows);

}  // namespace vantrel::linuxdesktop
