#include "platform/linux/ui/WindowWidget.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace vantrel::linuxdesktop {

WindowWidget::WindowWidget() {
    setObjectName("window");
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_StyledBackground);
}

void WindowWidget::closeEvent(QCloseEvent* event) {
    event->ignore();
    // A copy: the handler may clear itself.
    if (const Block handler = onClose) handler();
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
    const auto handler = onKey;
    if (!handler || !handler(*event)) QWidget::keyPressEvent(event);
}

}  // namespace vantrel::linuxdesktop
