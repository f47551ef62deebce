#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

namespace vantrel::linuxdesktop {

/// What the widget and its children paint at that size, on white.
inline QImage painted(QWidget& widget, const QSize& size) {
    widget.resize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// The bounds of everything that is not white. Empty if all is white.
inline QRect ink(const QImage& image) {
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255)) found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

}  // namespace vantrel::linuxdesktop
