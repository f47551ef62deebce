#pragma once

#include <QWidget>

namespace vantrel::linuxdesktop {

/// A line of plain text. What does not fit ends in an ellipsis and can be read whole in the tool tip.
class SingleLineLabel final : public QWidget {
  public:
    explicit SingleLineLabel(QWidget* parent);

    void setText(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString line_;
};

}  // namespace vantrel::linuxdesktop
