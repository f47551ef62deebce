#include "platform/linux/ui/AlertIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace vantrel::linuxdesktop {

namespace {

// All coordinates are in a square of 64.
constexpr double grid = 64;

QPixmap emptyPixmap(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

void drawLock(QPainter& painter) {
    QLinearGradient ground(0, 0, 0, grid);
    ground.setColorAt(0, QColor("#3b8bff"));
    ground.setColorAt(1, QColor("#0b57d0"));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(3, 3, 58, 58), 14, 14);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 5, Qt::SolidLine, Qt::FlatCap));
    QPainterPath shackle(QPointF(22.5, 31));
    shackle.lineTo(22.5, 25);
    shackle.arcTo(QRectF(22.5, 15.5, 19, 19), 180, -180);
    shackle.lineTo(41.5, 31);
    painter.drawPath(shackle);

    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(16.5, 30, 31, 20), 4, 4);
    painter.setBrush(QColor("#0b57d0"));
    painter.drawEllipse(QPointF(32, 38.5), 3, 3);
    painter.drawRect(QRectF(30.8, 39, 2.4, 6));
}

void drawCaution(QPainter& painter) {
    QPainterPath triangle;
    triangle.moveTo(32, 4);
    triangle.lineTo(62, 58);
    triangle.lineTo(2, 58);
    triangle.closeSubpath();
    painter.setPen(QPen(QColor("#e0a400"), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor("#ffcc1d"));
    painter.drawPath(triangle);
    painter.setPen(QPen(QColor("#3a2f00"), 6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(32, 24), QPointF(32, 40));
    painter.drawPoint(QPointF(32, 50));
}

}  // namespace

QPixmap applicationIcon(int size) {
    QPixmap pixmap = emptyPixmap(size);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / grid, size / grid);
    drawLock(painter);
    return pixmap;
}

QPixmap alertIcon(AlertStyle style, int size) {
    if (style != AlertStyle::critical) return applicationIcon(size);
    QPixmap pixmap = emptyPixmap(size);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / grid, size / grid);
    drawCaution(painter);
    painter.translate(34, 34);
    painter.scale(0.47, 0.47);
    drawLock(painter);
    return pixmap;
}

}  // namespace vantrel::linuxdesktop
