#pragma once

#include "platform/system/AccessibilityTrust.h"

namespace vantrel::linuxdesktop {

/// X11 lets every client of the display control the windows of the others, so this permission always exists.
class LinuxAccessibilityTrust final : public AccessibilityTrust {
  public:
    bool isProcessTrusted() const override { return true; }
    bool isProcessTrustedWithPrompt() override { return true; }
};

}  // namespace vantrel::linuxdesktop
