#pragma once

namespace vantrel {

/// Whether this process may use the Accessibility interface. Any thread.
class AccessibilityTrust {
  public:
    virtual ~AccessibilityTrust() = default;

    /// AXIsProcessTrusted; never shows a prompt.
    virtual bool isProcessTrusted() const = 0;

    /// AXIsProcessTrustedWithOptions with the prompt option: if the answer is no, the system asks the user.
    virtual bool isProcessTrustedWithPrompt() = 0;
};

}  // namespace vantrel
