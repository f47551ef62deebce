#pragma once

#include "platform/desktop/Accessibility.h"

namespace vantrel::macos {

class MacAccessibility final : public Accessibility {
  public:
    std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const override;
};

}  // namespace vantrel::macos
