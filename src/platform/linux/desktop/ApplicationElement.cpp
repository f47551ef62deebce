#include "platform/linux/desktop/ApplicationElement.h"

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
    const bool focused = name == "AXFocusedWindow";
    if (!focused && name != "AXWindows") return accessibilityAttributeUnsupported;
    std::vector<std::shared_ptr<AccessibilityElement>> elements;
    std::shared_ptr<AccessibilityElement> active;
    const auto activeWindow = focused ? dependencies_.windows.active() : std::nullopt;
    for (const X11WindowFacts& facts : dependencies_.survey.ofProcess(process_)) {
        elements.push_back(std::make_shared<WindowElement>(dependencies_, facts.window, process_));
        if (facts.window == activeWindow) active = elements.back();
    }
    if (!focused) return AccessibilityValue(std::move(elements));
    if (active) return AccessibilityValue(std::move(active));
    if (elements.empty()) return accessibilityNoValue;
    return AccessibilityValue(elements.front());
}

AccessibilityError ApplicationElement::setAttribute(std::string_view, const AccessibilityValue&) {
    return isGone() ? accessibilityCannotComplete : accessibilityAttributeUnsupported;
}

AccessibilityError ApplicationElement::performAction(std::string_view) {
    return isGone() ? accessibilityCannotComplete : accessibilityActionUnsupported;
}

}  // namespace vantrel::linuxdesktop
