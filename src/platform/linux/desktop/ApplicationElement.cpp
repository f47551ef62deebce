#include "platform/linux/desktop/ApplicationElement.h"

#include <algorithm>
#include <utility>

#include "platform/linux/apps/ProcessTable.h"
#include "platform/linux/desktop/WindowElement.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

ApplicationElement::ApplicationElement(const AccessibilityDependencies& dependencies, ProcessIdentifier process)
    : dependencies_(dependencies), process_(process), startTime_(ProcessTable::startTime(process)) {}

bool ApplicationElement::isGone() const {
    return !startTime_ || ProcessTable::startTime(process_) != startTime_ || !dependencies_.connection.isAlive();
}

std::variant<AccessibilityValue, AccessibilityError> ApplicationElement::attribute(std::string_view name) const {
    if (isGone()) return accessibilityCannotComplete;
    if (name == "AXFocusedWindow") return focusedWindow();
    if (name != "AXWindows") return accessibilityAttributeUnsupported;
    std::vector<std::shared_ptr<AccessibilityElement>> elements;
    for (const xcb_window_t window : dependencies_.survey.ofProcess(process_)) {
        elements.push_back(std::make_shared<WindowElement>(dependencies_, window, process_));
    }
    return AccessibilityValue(std::move(elements));
}

std::variant<AccessibilityValue, AccessibilityError> ApplicationElement::focusedWindow() const {
    AskedProperty asked = dependencies_.windows.askActive();
    const auto all = dependencies_.survey.ofProcess(process_);
    if (all.empty()) return accessibilityNoValue;
    const auto active = X11Windows::active(asked);
    const bool isOurs = active && std::find(all.begin(), all.end(), *active) != all.end();
    const xcb_window_t window = isOurs ? *active : all.front();
    return AccessibilityValue(std::make_shared<WindowElement>(dependencies_, window, process_));
}

AccessibilityError ApplicationElement::setAttribute(std::string_view, const AccessibilityValue&) {
    return isGone() ? accessibilityCannotComplete : accessibilityAttributeUnsupported;
}

AccessibilityError ApplicationElement::performAction(std::string_view) {
    return isGone() ? accessibilityCannotComplete : accessibilityActionUnsupported;
}

}  // namespace vantrel::linuxdesktop
