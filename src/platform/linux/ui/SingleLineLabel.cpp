#include "platform/linux/ui/SingleLineLabel.h"

#include <QPainter>

#include "platform/linux/ui/Appearance.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int longestLine = 1000;

}  // namespace

SingleLineLabel::SingleLineLabel(QWidget* parent) : QWidget(parent) {}

void SingleLineLabel::setText(const QString& text) {
    line_ = shownText(text, longestLine).simplified();
    setAccessibleName(line_);
    const bool fits = fontMetrics().horizontalAdvance(line_) <= width();
    setToolTip(fits ? QString() : "<qt>" + line_.toHtmlEscaped() + "</qt>");
    update();
}

void SingleLineLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QString fitting = fontMetrics().elidedText(line_, Qt::ElideRight, width());
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, fitting);
}

}  // namespace vantrel::linuxdesktop
