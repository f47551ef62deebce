#pragma once

#include <QWidget>

namespace vantrel::linuxdesktop {

/// A line of plain text. A text that is too long ends in an ellipsis; the tool tip shows all of it.
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
