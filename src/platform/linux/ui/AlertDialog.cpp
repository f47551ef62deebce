#include "platform/linux/ui/AlertDialog.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/linux/ui/AlertIcon.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/WrappingLabel.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int textWidth = 380;
constexpr int iconSize = 64;
constexpr int buttonHeight = 28;
constexpr int narrowestButton = 88;
constexpr int tallestMessage = 160;
constexpr int tallestInformation = 420;
constexpr int longestText = 8000;

QLabel* makeLabel(const QString& text, const Font& font) {
    auto* label = new WrappingLabel;
    label->setFont(Appearance::font(font));
    label->setText(text);
    label->setFixedWidth(textWidth);
    label->setMinimumHeight(label->heightForWidth(textWidth));
    return label;
}

// A server's text can have any length, but the buttons must stay on the screen.
QWidget* scrollingWhenTall(QLabel* label, int tallest) {
    if (label->heightForWidth(textWidth) <= tallest) return label;
    auto* area = new QScrollArea;
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(label);
    area->setFixedSize(textWidth + area->verticalScrollBar()->sizeHint().width() + 4, tallest);
    return area;
}

}  // namespace

AlertDialog::AlertDialog(const Alert& alert)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint) {
    setObjectName("alert");
    setWindowTitle("Vantrel");
    setWindowRole("alert");
    setWindowIcon(applicationIcon(iconSize));
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowModality(Qt::ApplicationModal);

    auto* icon = new QLabel;
    icon->setPixmap(alertIcon(alert.style, iconSize));
    auto* upper = new QHBoxLayout;
    upper->setSpacing(18);
    upper->addWidget(icon, 0, Qt::AlignTop);
    upper->addWidget(makeTexts(alert), 0, Qt::AlignTop);

    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(22, 22, 22, 20);
    whole->setSpacing(20);
    whole->addLayout(upper);
    whole->addWidget(makeButtons(alert));
    whole->setSizeConstraint(QLayout::SetFixedSize);
    firstButton_->setFocus();
}

QWidget* AlertDialog::makeTexts(const Alert& alert) {
    auto* texts = new QWidget;
    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 2, 0, 0);
    column->setSpacing(8);
    if (!alert.messageText.empty()) {
        auto* message = makeLabel(shownText(qtText(alert.messageText), longestText), {14, true});
        message->setObjectName("messageText");
        column->addWidget(scrollingWhenTall(message, tallestMessage));
    }
    if (!alert.informativeText.empty()) {
        auto* information = makeLabel(shownText(qtText(alert.informativeText), longestText), {13, false});
        information->setObjectName("informativeText");
        column->addWidget(scrollingWhenTall(information, tallestInformation));
    }
    column->addStretch();
    return texts;
}

QWidget* AlertDialog::makeButtons(const Alert& alert) {
    const std::vector<std::string> titles = alert.buttons.empty() ? std::vector<std::string>{"OK"} : alert.buttons;
    buttonCount_ = titles.size();
    const auto cancel = std::find(titles.begin(), titles.end(), "Annulla");
    escapeIndex_ = cancel != titles.end() ? static_cast<std::size_t>(cancel - titles.begin()) : buttonCount_ - 1;

    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    QPushButton* previous = nullptr;
    for (std::size_t index = 0; index < titles.size(); ++index) {
        auto* button = new QPushButton(shownText(qtText(titles[index]), 60).replace('&', "&&"));
        button->setObjectName("button" + QString::number(index));
        button->setAutoDefault(false);
        button->setProperty("prominent", index == 0);
        button->setFixedHeight(buttonHeight);
        button->setMinimumWidth(narrowestButton);
        connect(button, &QPushButton::clicked, this, [this, index] { choose(index); });
        // The default button is on the right, the others to its left. Tab visits them in order.
        layout->insertWidget(0, button);
        if (previous != nullptr) setTabOrder(previous, button);
        if (index == 0) firstButton_ = button;
        previous = button;
    }
    layout->insertStretch(0);
    return row;
}

void AlertDialog::choose(std::size_t index) {
    done(static_cast<int>(index));
}

void AlertDialog::escape() {
    if (buttonCount_ > 1) choose(escapeIndex_);
}

void AlertDialog::keyPressEvent(QKeyEvent* event) {
    // A key still held down from before the alert must not answer it.
    if (event->isAutoRepeat()) return;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        choose(0);
    } else if (event->key() == Qt::Key_Escape) {
        escape();
    } else {
        event->ignore();
    }
}

void AlertDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    escape();
}

}  // namespace vantrel::linuxdesktop
