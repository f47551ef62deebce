#include "platform/linux/LinuxAccessibility.h"

#include "platform/linux/ApplicationElement.h"

namespace vantrel::linuxdesktop {

std::shared_ptr<AccessibilityElement> LinuxAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<ApplicationElement>(surroundings_, process);
}

}  // namespace vantrel::linuxdesktop
