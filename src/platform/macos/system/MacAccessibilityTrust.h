#pragma once

#include "platform/system/AccessibilityTrust.h"

namespace vantrel::macos {

class MacAccessibilityTrust final : public AccessibilityTrust {
  public:
    bool isProcessTrusted() const override;
    bool isProcessTrustedWithPrompt() override;
};

}  // namespace vantrel::macos
