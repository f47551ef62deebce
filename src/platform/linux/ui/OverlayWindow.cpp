#include "platform/linux/ui/OverlayWindow.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <utility>

#include "platform/linux/ui/Appearance.h"

namespace vantrel::linuxdesktop {

namespace {

bool wraps(const OverlayLabel& label) {
    return label.fixedSize != Size();
}

QFont fontOf(const OverlayLabel& label) {
    return Appearance::font({label.fontSize, label.bold});
}

}  // namespace

OverlayWindow::OverlayWindow(const QRect& place, std::vector<OverlayLabel> labels)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus),
      labels_(std::move(labels)) {
    setWindowTitle("Vantrel overlay");
    setObjectName("overlay");
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ForbiddenCursor);
    setGeometry(place);
}

QRectF OverlayWindow::frameOf(const OverlayLabel& label) const {
    QSizeF size(label.fixedSize.width, label.fixedSize.height);
    if (!wraps(label)) {
        const QFontMetricsF metrics(fontOf(label));
        size = {metrics.horizontalAdvance(qtText(label.text)), metrics.height()};
    }
    return {QPointF(label.centreX - size.width() * 0.5, height() - label.y - size.height()), size};
}

void OverlayWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    for (const OverlayLabel& label : labels_) {
        painter.setFont(fontOf(label));
        painter.setPen(QColor::fromRgbF(static_cast<float>(label.whiteLevel), static_cast<float>(label.whiteLevel),
                                        static_cast<float>(label.whiteLevel)));
        const int way = wraps(label) ? Qt::AlignTop | Qt::TextWordWrap : Qt::AlignVCenter | Qt::TextDontClip;
        painter.drawText(frameOf(label), Qt::AlignHCenter | way, qtText(label.text));
    }
}

bool OverlayWindow::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
            event->accept();
            return true;
        default:
            return QWidget::event(event);
    }
}

}  // namespace vantrel::linuxdesktop
