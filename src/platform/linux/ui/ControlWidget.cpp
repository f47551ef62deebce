#include "platform/linux/ui/ControlWidget.h"

#include <QFrame>
#include <QLineEdit>
#include <QPushButton>
#include <cmath>

#include "platform/linux/screenreader/AccessibleRole.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/SingleLineLabel.h"
#include "platform/linux/ui/WrappingLabel.h"
#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int longestField = 1'000'000;
constexpr int longestShown = 4000;

QWidget* makeSeparator(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setObjectName("separator");
    presentAs(*line, QAccessible::Separator);
    return line;
}

QLineEdit* makeField(const Control& control, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setMaxLength(longestField);
    field->setPlaceholderText(qtText(control.placeholder));
    field->setAccessibleName(qtText(control.accessibilityLabel));
    return field;
}

QPushButton* makeButton(const Control& control, QWidget* parent) {
    auto* button = new QPushButton(parent);
    // A click leaves the focus in the field where the user is typing.
    button->setFocusPolicy(Qt::TabFocus);
    button->setProperty("prominent", control.keyEquivalent == "\r");
    return button;
}

}  // namespace

ControlWidget::ControlWidget(const Control& control, double viewHeight, QWidget* parent)
    : kind_(control.kind),
      id_(control.id),
      announced_(control.announced),
      keyEquivalent_(qtText(control.keyEquivalent)) {
    switch (kind_) {
        case Control::Kind::label:
            widget_ = new SingleLineLabel(parent);
            break;
        case Control::Kind::wrappingLabel:
            widget_ = new WrappingLabel(parent);
            break;
        case Control::Kind::textField:
            widget_ = field_ = makeField(control, parent);
            break;
        case Control::Kind::separator:
            widget_ = makeSeparator(parent);
            break;
        case Control::Kind::button:
            widget_ = button_ = makeButton(control, parent);
            break;
    }
    const Rect& frame = control.frame;
    widget_->setGeometry(pixels(frame.origin.x), pixels(viewHeight - frame.origin.y - frame.size.height),
                         pixels(frame.size.width), pixels(frame.size.height));
    if (kind_ != Control::Kind::separator) {
        widget_->setObjectName(qtText(id_));
        widget_->setFont(Appearance::font(control.font));
    }
    QPalette palette = widget_->palette();
    if (kind_ == Control::Kind::label || kind_ == Control::Kind::wrappingLabel) {
        palette.setColor(QPalette::WindowText, QColor(Appearance::colorName(control.color)));
        widget_->setPalette(palette);
        presentAs(*widget_, announced_ ? QAccessible::Notification : QAccessible::StaticText);
    }
    setText(control.text);
    if (announced_ && text_.empty()) widget_->hide();
}

std::string ControlWidget::text() const {
    return field_ != nullptr ? field_->text().toStdString() : text_;
}

void ControlWidget::setText(std::string_view text) {
    const std::string before = text_;
    text_ = repairedUTF8(text);
    show(qtText(text_));
    if (announced_ && text_ != before) announce(qtText(text_));
}

// A screen reader speaks a notification that comes on the screen. So one without a text is not there.
void ControlWidget::announce(const QString& text) {
    widget_->setAccessibleName(shownText(text, longestShown));
    const bool wasThere = widget_->isVisible();
    widget_->setVisible(!text.isEmpty());
    if (!wasThere || text.isEmpty()) return;
    QAccessibleEvent again(widget_, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&again);
}

void ControlWidget::show(const QString& text) {
    if (field_ != nullptr) {
        field_->setText(text);
        field_->setCursorPosition(0);
    } else if (button_ != nullptr) {
        button_->setText(shownText(text, longestShown).replace('&', "&&"));
    } else if (auto* line = dynamic_cast<SingleLineLabel*>(widget_)) {
        line->setText(text);
    } else if (auto* label = dynamic_cast<WrappingLabel*>(widget_)) {
        label->setText(shownText(text, longestShown));
    }
}

void ControlWidget::setEnabled(bool enabled) {
    widget_->setEnabled(enabled);
}

}  // namespace vantrel::linuxdesktop
