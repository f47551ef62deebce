#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/desktop/Accessibility.h"

namespace vantrel {

/// Reads and writes a browser's windows. A read that fails counts as a missing value. Any thread.

/// The application's windows, in Accessibility's order. Empty if they cannot be read.
std::vector<std::shared_ptr<AccessibilityElement>> accessibilityWindows(const Accessibility& accessibility,
                                                                        ProcessIdentifier process);

/// Empty if it cannot be read or is not a boolean.
std::optional<bool> isFullscreen(const AccessibilityElement& window);
AccessibilityError setFullscreen(AccessibilityElement& window, bool fullscreen);

/// The application's window with the keyboard focus. Null if it cannot be read.
std::shared_ptr<AccessibilityElement> accessibilityFocusedWindow(const Accessibility& accessibility,
                                                                 ProcessIdentifier process);

/// Values that cannot be read are 0.
Rect accessibilityFrame(const AccessibilityElement& window);

/// Moves and then resizes the window. Errors are ignored.
void setFrame(AccessibilityElement& window, const Rect& frame);

/// Presses the window's close button, if it has one.
void pressCloseButton(const AccessibilityElement& window);

}  // namespace vantrel
