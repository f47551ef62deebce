#pragma once

#include <QString>
#include <memory>

#include "platform/ui/Window.h"

class QLineEdit;
class QPushButton;
class QWidget;

namespace vantrel::linuxdesktop {

/// One control on the screen. The widget belongs to its parent and must outlive this object. Main thread.
class ControlWidget {
  public:
    /// `viewHeight` converts the frame, which counts from the bottom.
    ControlWidget(const Control& control, double viewHeight, QWidget* parent);

    std::string text() const;
    void setText(std::string_view text);
    void setEnabled(bool enabled);

    const std::string& id() const { return id_; }
    /// Null for other kinds.
    QPushButton* button() const { return button_; }
    QLineEdit* field() const { return field_; }
    /// "\r" stands for Return.
    const QString& keyEquivalent() const { return keyEquivalent_; }

  private:
    void show(const QString& text);
    void announce(const QString& text);

    const Control::Kind kind_;
    const std::string id_;
    const bool announced_;
    std::string text_;
    QString keyEquivalent_;
    QWidget* widget_ = nullptr;
    QPushButton* button_ = nullptr;
    QLineEdit* field_ = nullptr;
};

}  // namespace vantrel::linuxdesktop
