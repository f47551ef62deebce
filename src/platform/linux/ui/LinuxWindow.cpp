#include "platform/linux/ui/LinuxWindow.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include "platform/linux/desktop/LinuxScreens.h"
#include "platform/linux/screenreader/AccessibleRole.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/ControlWidget.h"
#include "platform/linux/ui/MenuBars.h"
#include "platform/linux/ui/WindowActivation.h"
#include "platform/linux/ui/WindowWidget.h"
#include "platform/portable/StandardError.h"

namespace vantrel::linuxdesktop {

namespace {

[[noreturn]] void unknown(std::string_view id) {
    sayOnStandardError("vantrel: no control or view is called " + std::string(id) + "\n");
    std::abort();
}

}  // namespace

void LinuxWindow::LaterDeleter::operator()(WindowWidget* widget) const {
    // Destroyed later: the window may be on the stack, if one of its own buttons asked for this.
    widget->onClose = nullptr;
    widget->onKey = nullptr;
    // A press may still be under way.
    for (QPushButton* button : widget->findChildren<QPushButton*>()) {
        QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
    }
    widget->hide();
    widget->deleteLater();
}

LinuxWindow::LinuxWindow(const WindowDescription& description, Windows::ActionHandler onAction,
                         const WindowDependencies& dependencies)
    : dependencies_(dependencies),
      onAction_(std::make_shared<const Windows::ActionHandler>(std::move(onAction))),
      styleMask_(description.styleMask),
      widget_(new WindowWidget) {
    const int width = pixels(description.contentRect.size.width);
    const int height = pixels(description.contentRect.size.height);
    QMenuBar* bar = dependencies_.menuBars.add(widget_.get());
    const int barHeight = bar != nullptr ? Appearance::menuBarHeight : 0;
    if (bar != nullptr) bar->setGeometry(0, 0, width, barHeight);

    auto* content = new QWidget(widget_.get());
    content->setGeometry(0, barHeight, width, height);
    for (const View& view : description.views) addView(view, content);

    presentAs(*widget_, QAccessible::Window);
    widget_->setWindowTitle(qtText(description.title));
    widget_->setFixedSize(width, height + barHeight);
    const X11Rectangle place = dependencies_.screens.toPixels(description.contentRect);
    widget_->move(place.x, place.y - barHeight);
    widget_->onKey = [this](const QKeyEvent& event) { return performKeyEquivalent(event); };
    widget_->onClose = [this] {
        if ((styleMask_ & windowClosable) != 0) dependencies_.mainThread.post(dependencies_.terminate);
    };
}

LinuxWindow::~LinuxWindow() = default;

void LinuxWindow::addView(const View& view, QWidget* content) {
    auto* widget = new QWidget(content);
    const int height = pixels(view.frame.size.height);
    widget->setGeometry(pixels(view.frame.origin.x), content->height() - pixels(view.frame.origin.y) - height,
                        pixels(view.frame.size.width), height);
    widget->setVisible(!view.hidden);
    views_.emplace(view.id, widget);
    for (const Control& control : view.controls) {
        controls_.push_back(std::make_unique<ControlWidget>(control, view.frame.size.height, widget));
        if (QPushButton* button = controls_.back()->button()) {
            QObject::connect(button, &QPushButton::clicked, widget_.get(), [this, id = control.id] { press(id); });
        }
    }
}

// By value: the handler may destroy the window, and with it the connection that owns the id.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void LinuxWindow::press(std::string id) {
    const auto handler = onAction_;
    if (*handler) (*handler)(id);
}

bool LinuxWindow::performKeyEquivalent(const QKeyEvent& event) {
    if (event.isAutoRepeat() || (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != 0) return false;
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const QString pressed = isReturn ? QString("\r") : event.text();
    if (pressed.isEmpty()) return false;
    const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) {
        const QPushButton* button = control->button();
        return button != nullptr && control->keyEquivalent() == pressed && button->isVisible() && button->isEnabled();
    });
    if (found == controls_.end()) return false;
    press((*found)->id());
    return true;
}

QWidget& LinuxWindow::widget() const {
    return *widget_;
}

void LinuxWindow::center() {
    MainThread::require("center");
    const X11Rectangle screen = dependencies_.screens.mainFrame();
    // Somewhat above the middle, where people look first.
    constexpr int shareAbove = 5;
    widget_->move(screen.x + (screen.width - widget_->width()) / 2,
                  screen.y + std::max(0, (screen.height - widget_->height()) * 2 / shareAbove));
}

void LinuxWindow::setIsVisible(bool visible) {
    MainThread::require("setIsVisible");
    if (visible) {
        widget_->show();
        applyStyleMask();
    } else {
        widget_->hide();
    }
}

void LinuxWindow::makeKeyAndOrderFront() {
    MainThread::require("makeKeyAndOrderFront");
    setIsVisible(true);
    if (widget_->focusWidget() == nullptr) focusFirstField();
    bringToFront(*widget_, dependencies_.windows);
}

void LinuxWindow::orderOut() {
    setIsVisible(false);
}

void LinuxWindow::setStyleMask(unsigned mask) {
    MainThread::require("setStyleMask");
    styleMask_ = mask;
    applyStyleMask();
}

// The window manager chooses its buttons by this property. Qt could set it too, but hides the window for it.
void LinuxWindow::applyStyleMask() {
    if (widget_->windowHandle() == nullptr) return;
    constexpr std::uint32_t functionsAndDecorations = 3;
    constexpr std::uint32_t move = 4, minimize = 8, close = 32;
    constexpr std::uint32_t border = 2, title = 8, menu = 16, minimizeButton = 32;
    const bool closable = (styleMask_ & windowClosable) != 0;
    const bool miniaturizable = (styleMask_ & windowMiniaturizable) != 0;
    const std::uint32_t functions = move | (miniaturizable ? minimize : 0) | (closable ? close : 0);
    const std::uint32_t decorations = (styleMask_ & windowTitled) == 0 ? 0
                                                                       : border | title | (closable ? menu : 0) |
                                                                             (miniaturizable ? minimizeButton : 0);
    const std::array<std::uint32_t, 5> hints{functionsAndDecorations, functions, decorations, 0, 0};
    X11Connection& connection = dependencies_.connection;
    const xcb_atom_t property = connection.atom("_MOTIF_WM_HINTS");
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(widget_->winId()), property,
                        property, 32, hints.size(), hints.data());
    xcb_flush(connection.get());
}

// Without a field the window itself gets the focus. Qt would give it to a button as soon as the window is activated,
// and whoever is typing then would press it.
void LinuxWindow::focusFirstField() {
    for (const auto& control : controls_) {
        QLineEdit* field = control->field();
        if (field == nullptr || !field->isVisible() || !field->isEnabled()) continue;
        field->setFocus();
        field->selectAll();
        return;
    }
    widget_->setFocus();
}

ControlWidget& LinuxWindow::control(std::string_view id) {
    const auto found =
        std::find_if(controls_.begin(), controls_.end(), [id](const auto& control) { return control->id() == id; });
    if (found == controls_.end() || id.empty()) unknown(id);
    return **found;
}

std::optional<std::string> LinuxWindow::text(std::string_view id) const {
    MainThread::require("text");
    for (const auto& control : controls_) {
        if (control->id() == id && !id.empty()) return control->text();
    }
    return std::nullopt;
}

void LinuxWindow::setText(std::string_view id, std::string_view text) {
    MainThread::require("setText");
    control(id).setText(text);
}

void LinuxWindow::setEnabled(std::string_view id, bool enabled) {
    MainThread::require("setEnabled");
    control(id).setEnabled(enabled);
}

void LinuxWindow::setViewHidden(std::string_view viewId, bool hidden) {
    MainThread::require("setViewHidden");
    const auto found = views_.find(viewId);
    if (found == views_.end()) unknown(viewId);
    found->second->setVisible(!hidden);
    const QWidget* focused = widget_->focusWidget();
    if (focused == nullptr || focused == widget_.get() || !focused->isVisible()) focusFirstField();
}

}  // namespace vantrel::linuxdesktop
