#include "tests/linux/support/OwnWindows.h"

#include <unistd.h>

#include <QAccessible>
#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>

namespace vantrel::linuxdesktop {

namespace {

// Where Qt would otherwise see a mnemonic, an ampersand is doubled.
std::string plain(const QString& text) {
    return QString(text).replace("&&", "&").toStdString();
}

QAction* actionNamed(const QList<QAction*>& actions, const std::string& text) {
    for (QAction* action : actions) {
        if (plain(action->text()) == text) return action;
    }
    return nullptr;
}

}  // namespace

std::vector<QWidget*> OwnWindows::shown() {
    std::vector<QWidget*> found;
    for (const xcb_window_t window : windows_.ofProcess(getpid())) {
        QWidget* widget = QWidget::find(window);
        if (widget != nullptr && widget->isVisible()) found.push_back(widget);
    }
    return found;
}

QWidget* OwnWindows::widget(const std::string& name) {
    const auto windows = shown();
    QWidget* found = windows.empty() ? nullptr : windows.front()->findChild<QWidget*>(QString::fromStdString(name));
    return found != nullptr && found->isVisible() ? found : nullptr;
}

std::string OwnWindows::text(const QWidget& widget) {
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) return field->text().toStdString();
    if (const auto* button = qobject_cast<const QPushButton*>(&widget)) return plain(button->text());
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text().toStdString();
    return widget.accessibleName().toStdString();
}

std::vector<std::string> OwnWindows::tabOrder() {
    std::vector<std::string> names;
    const auto windows = shown();
    if (windows.empty()) return names;
    QWidget* const window = windows.front();
    for (QWidget* next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain()) {
        const bool stops = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisible() && next->isEnabled();
        if (stops) names.push_back(next->objectName().toStdString());
    }
    return names;
}

std::string OwnWindows::accessibleName(QWidget* widget) {
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface != nullptr ? interface->text(QAccessible::Name).toStdString() : std::string();
}

void OwnWindows::press(const std::string& name) {
    if (auto* button = qobject_cast<QPushButton*>(widget(name))) button->click();
}

Block OwnWindows::heldPress(const std::string& name) {
    return [button = QPointer<QPushButton>(qobject_cast<QPushButton*>(widget(name)))] {
        if (button) button->click();
    };
}

void OwnWindows::pressReturn() {
    const auto windows = shown();
    if (windows.empty()) return;
    QWidget* focused = windows.front()->focusWidget();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
    QCoreApplication::sendEvent(focused != nullptr ? focused : windows.front(), &press);
}

void OwnWindows::typeInto(const std::string& name, const std::string& text) {
    auto* field = qobject_cast<QLineEdit*>(widget(name));
    if (field == nullptr || !field->isEnabled()) return;
    field->selectAll();
    field->insert(QString::fromStdString(text));
}

QAction* OwnWindows::inMenuBar(const std::string& menu, const std::string& item) {
    const auto windows = shown();
    const auto* bar = windows.empty() ? nullptr : windows.front()->findChild<QMenuBar*>();
    const QAction* opened = bar != nullptr ? actionNamed(bar->actions(), menu) : nullptr;
    return opened != nullptr ? actionNamed(opened->menu()->actions(), item) : nullptr;
}

bool OwnWindows::isAvailableInMenuBar(const std::string& menu, const std::string& item) {
    const QAction* found = inMenuBar(menu, item);
    return found != nullptr && found->isEnabled();
}

bool OwnWindows::chooseFromMenuBar(const std::string& menu, const std::string& item) {
    QAction* chosen = inMenuBar(menu, item);
    if (chosen == nullptr) return false;
    // Nothing happens if it is disabled.
    chosen->trigger();
    return true;
}

}  // namespace vantrel::linuxdesktop
