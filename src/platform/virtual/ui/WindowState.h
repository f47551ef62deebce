#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ui/Window.h"

namespace vantrel::virtualmac {

/// A window as a person in front of the screen sees it.
struct WindowState {
    int number = 0;
    std::string title;
    Rect contentRect;
    unsigned styleMask = 0;
    bool visible = false;
    bool key = false;
    bool centered = false;
    /// With the current texts and hidden flags.
    std::vector<View> views;
    std::set<std::string, std::less<>> disabled;

    /// Null if no view has the id.
    const View* view(std::string_view id) const;
    const Control* control(std::string_view id) const;
    /// The view that contains the control.
    const View* viewOf(std::string_view controlId) const;

    bool isEnabled(std::string_view controlId) const { return !disabled.contains(controlId); }
    /// Whether the participant sees the control: the window is visible and the control's view is not hidden.
    bool shows(std::string_view controlId) const;
    /// The current text of a control. Empty if none has that id.
    std::string text(std::string_view controlId) const;

    /// The texts on the screen that a screen reader is told.
    std::vector<std::string> announced() const;
    /// The ids of the controls that Tab goes through, in order.
    std::vector<std::string> tabOrder() const;
};

}  // namespace vantrel::virtualmac
