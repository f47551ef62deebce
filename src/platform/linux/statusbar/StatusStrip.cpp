#include "platform/linux/statusbar/StatusStrip.h"

#include <QMouseEvent>
#include <QPainter>

#include "platform/linux/screenreader/AccessibleRole.h"
#include "platform/linux/ui/Appearance.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int stripHeight = 26;
constexpr int margin = 14;
constexpr int distanceFromCorner = 24;
constexpr int longestStripTitle = 60;

}  // namespace

StatusStrip::StatusStrip()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus) {
    setWindowTitle("Vantrel status");
    presentAs(*this, QAccessible::ButtonMenu);
    setObjectName("statusStrip");
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setCursor(Qt::PointingHandCursor);
    setFont(Appearance::font({13, false}));
    setFixedHeight(stripHeight);
}

void StatusStrip::setTitle(const QString& title) {
    title_ = shownText(title, longestStripTitle).simplified();
    setAccessibleName(title_);
    const int right = geometry().right();
    setFixedWidth(fontMetrics().horizontalAdvance(title_) + 2 * margin);
    move(right - width() + 1, y());
    update();
}

void StatusStrip::hangFrom(const QRect& display) {
    move(display.right() - distanceFromCorner - width() + 1, display.top());
}

void StatusStrip::setPressed(bool pressed) {
    pressed_ = pressed;
    update();
}

void StatusStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(pressed_ ? "#0a6cff" : "#1d1d1f"));
    painter.setPen(QColor(pressed_ ? "#5a9bff" : "#48484a"));
    painter.drawRect(rect().adjusted(0, -1, -1, -1));
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, title_);
}

void StatusStrip::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const Block handler = onPress;
    if (handler) handler();
}

}  // namespace vantrel::linuxdesktop
