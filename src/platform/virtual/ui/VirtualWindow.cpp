#include "platform/virtual/ui/VirtualWindow.h"

#include <algorithm>
#include <string>

#include "platform/portable/UTF8Validity.h"
#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

VirtualWindows::VirtualWindow::~VirtualWindow() {
    hide();
    owner_.remove(number_);
}

void VirtualWindows::VirtualWindow::center() {
    owner_.with(number_, [](Record& record) { record.state.centered = true; });
    owner_.engine_.journal.emit({WindowEvent::centered, state().title});
}

void VirtualWindows::VirtualWindow::setIsVisible(bool visible) {
    if (visible) {
        show(false);
    } else {
        hide();
    }
}

void VirtualWindows::VirtualWindow::makeKeyAndOrderFront() {
    show(true);
}

void VirtualWindows::VirtualWindow::orderOut() {
    hide();
}

unsigned VirtualWindows::VirtualWindow::styleMask() const {
    return state().styleMask;
}

void VirtualWindows::VirtualWindow::setStyleMask(unsigned mask) {
    const WindowState before = state();
    if (before.styleMask == mask) return;
    owner_.with(number_, [mask](Record& record) { record.state.styleMask = mask; });
    owner_.engine_.journal.emit({WindowEvent::style, before.title, {{Field::mask, std::to_string(mask)}}});
}

std::optional<std::string> VirtualWindows::VirtualWindow::text(std::string_view id) const {
    const WindowState current = state();
    const Control* control = current.control(id);
    if (control == nullptr) return std::nullopt;
    return control->text;
}

void VirtualWindows::VirtualWindow::setText(std::string_view id, std::string_view bytes) {
    const std::string text = repairedUTF8(bytes);
    const WindowState before = state();
    const Control* control = before.control(id);
    if (control == nullptr) return owner_.engine_.misuse("Window.setText: no control is called " + std::string(id));
    if (control->text == text) return;
    owner_.with(number_, [&](Record& record) {
        for (View& view : record.state.views) {
            for (Control& each : view.controls) {
                if (each.id == id) each.text = text;
            }
        }
    });
    owner_.engine_.journal.emit({ControlEvent::text, std::string(id), {{Field::value, text}}});
    announceSince(before);
}

void VirtualWindows::VirtualWindow::setEnabled(std::string_view id, bool enabled) {
    const WindowState before = state();
    if (before.control(id) == nullptr) {
        return owner_.engine_.misuse("Window.setEnabled: no control is called " + std::string(id));
    }
    if (before.isEnabled(id) == enabled) return;
    owner_.with(number_, [&](Record& record) {
        if (enabled) {
            record.state.disabled.erase(std::string(id));
        } else {
            record.state.disabled.emplace(id);
        }
    });
    owner_.engine_.journal.emit({enabled ? ControlEvent::enabled : ControlEvent::disabled, std::string(id)});
}

void VirtualWindows::VirtualWindow::setViewHidden(std::string_view viewId, bool hidden) {
    const WindowState before = state();
    const View* view = before.view(viewId);
    if (view == nullptr) return owner_.engine_.misuse("Window.setViewHidden: no view is called " + std::string(viewId));
    if (view->hidden == hidden) return;
    owner_.with(number_, [&](Record& record) {
        for (View& each : record.state.views) {
            if (each.id == viewId) each.hidden = hidden;
        }
    });
    owner_.engine_.journal.emit({hidden ? ViewEvent::hidden : ViewEvent::shown, std::string(viewId)});
    announceSince(before);
}

WindowState VirtualWindows::VirtualWindow::state() const {
    WindowState state;
    owner_.with(number_, [&state](const Record& record) { state = record.state; });
    return state;
}

void VirtualWindows::VirtualWindow::show(bool asKey) {
    const WindowState before = state();
    owner_.bringToFront(number_);
    owner_.with(number_, [asKey](Record& record) {
        record.state.visible = true;
        record.state.key = record.state.key || asKey;
    });
    if (!before.visible) {
        owner_.engine_.journal.emit({WindowEvent::shown, before.title, {{Field::frame, describe(before.contentRect)}}});
        announceSince(before);
    }
    if (!asKey || before.key) return;
    {
        const std::lock_guard guard(owner_.mutex_);
        for (Record& record : owner_.windows_) record.state.key = record.state.number == number_;
    }
    owner_.engine_.journal.emit({WindowEvent::key, before.title});
}

void VirtualWindows::VirtualWindow::announceSince(const WindowState& before) {
    const WindowState now = state();
    for (const std::string& text : now.announced()) {
        const auto earlier = before.announced();
        if (std::find(earlier.begin(), earlier.end(), text) == earlier.end()) owner_.announce(text);
    }
}

void VirtualWindows::VirtualWindow::hide() {
    const WindowState before = state();
    if (!before.visible) return;
    owner_.with(number_, [](Record& record) { record.state.visible = record.state.key = false; });
    owner_.engine_.journal.emit({WindowEvent::hidden, before.title});
}

}  // namespace vantrel::virtualmac
