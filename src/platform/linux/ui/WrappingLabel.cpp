#include "platform/linux/ui/WrappingLabel.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace vantrel::linuxdesktop {

WrappingLabel::WrappingLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void WrappingLabel::layOut(QTextLayout& layout, int width) const {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setFont(font());
    layout.setText(text().replace('\n', QChar(QChar::LineSeparator)));
    layout.setCacheEnabled(true);
    layout.beginLayout();
    qreal y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += std::ceil(line.height());
    }
    layout.endLayout();
}

int WrappingLabel::heightForWidth(int width) const {
    if (text().isEmpty()) return 0;
    QTextLayout layout;
    layOut(layout, width);
    return static_cast<int>(std::ceil(layout.boundingRect().bottom()));
}

int WrappingLabel::longestLine(int width) const {
    QTextLayout layout;
    layOut(layout, width);
    qreal longest = 0;
    for (int i = 0; i < layout.lineCount(); ++i) longest = std::max(longest, layout.lineAt(i).naturalTextWidth());
    return static_cast<int>(std::ceil(longest));
}

void WrappingLabel::paintEvent(QPaintEvent*) {
    if (text().isEmpty()) return;
    QTextLayout layout;
    layOut(layout, width());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    layout.draw(&painter, QPointF(0, 0));
}

}  // namespace vantrel::linuxdesktop
