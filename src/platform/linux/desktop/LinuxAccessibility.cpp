#include "platform/linux/desktop/LinuxAccessibility.h"

#include "platform/linux/desktop/ApplicationElement.h"

namespace vantrel::linuxdesktop {

std::shared_ptr<AccessibilityElement> LinuxAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<ApplicationElement>(dependencies_, process);
}

}  // namespace vantrel::linuxdesktop
