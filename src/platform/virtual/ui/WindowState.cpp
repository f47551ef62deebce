#include "platform/virtual/ui/WindowState.h"

#include <algorithm>

namespace vantrel::virtualmac {

const View* WindowState::view(std::string_view id) const {
    if (id.empty()) return nullptr;
    const auto found = std::find_if(views.begin(), views.end(), [id](const View& view) { return view.id == id; });
    return found == views.end() ? nullptr : &*found;
}

const View* WindowState::viewOf(std::string_view controlId) const {
    if (controlId.empty()) return nullptr;
    const auto found = std::find_if(views.begin(), views.end(), [controlId](const View& view) {
        return std::any_of(view.controls.begin(), view.controls.end(),
                           [controlId](const Control& control) { return control.id == controlId; });
    });
    return found == views.end() ? nullptr : &*found;
}

const Control* WindowState::control(std::string_view id) const {
    const View* holder = viewOf(id);
    if (holder == nullptr) return nullptr;
    return &*std::find_if(holder->controls.begin(), holder->controls.end(),
                          [id](const Control& control) { return control.id == id; });
}

bool WindowState::shows(std::string_view controlId) const {
    const View* holder = viewOf(controlId);
    return visible && holder != nullptr && !holder->hidden;
}

std::string WindowState::text(std::string_view controlId) const {
    const Control* found = control(controlId);
    return found == nullptr ? std::string() : found->text;
}

std::vector<std::string> WindowState::announced() const {
    std::vector<std::string> texts;
    for (const View& each : views) {
        if (!visible || each.hidden) continue;
        for (const Control& control : each.controls) {
            if (control.announced && !control.text.empty()) texts.push_back(control.text);
        }
    }
    return texts;
}

std::vector<std::string> WindowState::tabOrder() const {
    std::vector<std::string> ids;
    for (const View& each : views) {
        if (!visible || each.hidden) continue;
        for (const Control& control : each.controls) {
            const bool takesKeys = control.kind == Control::Kind::textField || control.kind == Control::Kind::button;
            if (takesKeys && isEnabled(control.id)) ids.push_back(control.id);
        }
    }
    return ids;
}

}  // namespace vantrel::virtualmac
