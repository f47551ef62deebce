#pragma once

namespace vantrel {

/// Whether this process may use the Accessibility interface. Any thread.
class AccessibilityTrust {
  public:
    virtual ~AccessibilityTrust() = default;

    /// AXIsProcessTrusted; never shows a prompt.
    virtual bool isProcessTrusted() const = 0;

    /// AXIsProcessTrustedWithOptions with the prompt option: the system asks the user when the answer is no.
    virtual bool isProcessTrustedWithPrompt() = 0;
};

}  // namespace vantrel
