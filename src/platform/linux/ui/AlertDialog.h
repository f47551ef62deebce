#pragma once

#include <QDialog>

#include "platform/ui/Alerts.h"

class QPushButton;
class QWidget;

namespace vantrel::linuxdesktop {

/// One alert on the screen. Its result is the index of the chosen button. Return chooses the first button wherever the
/// focus is. Escape chooses "Annulla", or else the last of several buttons. Main thread.
class AlertDialog final : public QDialog {
  public:
    explicit AlertDialog(const Alert& alert);

    /// The result for "no answer": the button of Escape, or the only one.
    std::size_t indexWithoutAnswer() const { return escapeIndex_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* makeTexts(const Alert& alert);
    QWidget* makeButtons(const Alert& alert);
    void choose(std::size_t index);
    void escape();

    std::size_t buttonCount_ = 0;
    std::size_t escapeIndex_ = 0;
    QPushButton* firstButton_ = nullptr;
};

}  // namespace vantrel::linuxdesktop
