#include "platform/macos/desktop/MacAccessibility.h"

#include "platform/macos/desktop/MacAccessibilityElement.h"

namespace vantrel::macos {

std::shared_ptr<AccessibilityElement> MacAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<MacAccessibilityElement>(
        CFReference<AXUIElementRef>::created(AXUIElementCreateApplication(process)));
}

}  // namespace vantrel::macos
