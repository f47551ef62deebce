#pragma once

class QWidget;

namespace vantrel::linuxdesktop {

class X11Windows;

/// Brings a window of this process to the front and gives it the keyboard, also one that was shown only just now. Asked
/// on the user's behalf: what Qt asks for itself, a window manager may decline in favour of the window that had the
/// keyboard last. Main thread.
void bringToFront(QWidget& window, X11Windows& windows);

}  // namespace vantrel::linuxdesktop
