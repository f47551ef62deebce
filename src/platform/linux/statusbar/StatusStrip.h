#pragma once

#include <QWidget>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// A strip at the top edge of a display that shows the status item's title. The window manager does not manage it: it
/// takes no focus and is on every desktop. Main thread.
class StatusStrip final : public QWidget {
  public:
    StatusStrip();

    void setTitle(const QString& title);
    /// Keeps the strip away from the display's corner.
    void hangFrom(const QRect& display);
    void setPressed(bool pressed);

    Block onPress;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    QString title_;
    bool pressed_ = false;
};

}  // namespace vantrel::linuxdesktop
