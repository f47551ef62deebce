#pragma once

#include <QLabel>

class QTextLayout;

namespace vantrel::linuxdesktop {

/// A plain text over several lines, from the top. A word longer than a line, such as an address, is broken at the
/// line's end; QLabel would cut it off. Main thread.
class WrappingLabel final : public QLabel {
  public:
    explicit WrappingLabel(QWidget* parent = nullptr);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override { return {width(), heightForWidth(width())}; }
    QSize minimumSizeHint() const override { return {0, 0}; }

    /// The width in pixels of the longest line when the text is broken for `width`.
    int longestLine(int width) const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void layOut(QTextLayout& layout, int width) const;
};

}  // namespace vantrel::linuxdesktop
