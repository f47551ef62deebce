#pragma once

#include <QWidget>
#include <functional>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// The widget behind a window: it closes only when asked by its owner, and hands keys that no field wanted on. The
/// owner clears the handlers before it goes.
class WindowWidget final : public QWidget {
  public:
    WindowWidget();

    /// The close button, or the window manager, asks.
    Block onClose;
    /// True when the key was used.
    std::function<bool(const QKeyEvent&)> onKey;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace vantrel::linuxdesktop
