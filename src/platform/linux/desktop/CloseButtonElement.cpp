#include "platform/linux/desktop/CloseButtonElement.h"

#include "platform/linux/x11/X11WindowSurvey.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

bool CloseButtonElement::isGone() const {
    const auto facts = dependencies_.survey.of(window_);
    return !facts || facts->owner != owner_;
}

std::variant<AccessibilityValue, AccessibilityError> CloseButtonElement::attribute(std::string_view) const {
    return isGone() ? accessibilityInvalidElement : accessibilityAttributeUnsupported;
}

AccessibilityError CloseButtonElement::setAttribute(std::string_view, const AccessibilityValue&) {
    return isGone() ? accessibilityInvalidElement : accessibilityAttributeUnsupported;
}

AccessibilityError CloseButtonElement::performAction(std::string_view name) {
    if (isGone()) return accessibilityInvalidElement;
    if (name != "AXPress") return accessibilityActionUnsupported;
    dependencies_.windows.close(window_);
    return accessibilitySuccess;
}

}  // namespace vantrel::linuxdesktop
