#pragma once

#include <QWidget>
#include <functional>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// The widget behind a window. It closes only when its owner asks, and passes on keys that no field used. The owner
/// clears the handlers before it is destroyed.
class WindowWidget final : public QWidget {
  public:
    WindowWidget();

    /// The close button or the window manager asks to close.
    Block onClose;
    /// True if the key was used.
    std::function<bool(const QKeyEvent&)> onKey;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace vantrel::linuxdesktop
