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

}  // namespace vantrel::virtualmac
