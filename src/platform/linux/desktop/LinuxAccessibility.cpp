#include "platform/linux/desktop/LinuxAccessibility.h"

#include "platform/linux/desktop/ApplicationElement.h"

namespace vantrel::linuxdesktop {

namespace {

/// No call waits here.
class NoLimit final : public AccessibilityTimeLimit {
  public:
    void insist() override {}
};

}  // namespace

std::shared_ptr<AccessibilityElement> LinuxAccessibility::application(ProcessIdentifier process) const {
    return std::make_shared<ApplicationElement>(dependencies_, process);
}

std::unique_ptr<AccessibilityTimeLimit> LinuxAccessibility::limitTime() {
    return std::make_unique<NoLimit>();
}

}  // namespace vantrel::linuxdesktop
