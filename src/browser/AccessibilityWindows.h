#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/desktop/Accessibility.h"

namespace vantrel {

/// What the client reads and writes of a browser's windows. A read that fails counts as a missing value. Any thread.

/// The application's windows, its first one first; empty when they cannot be read.
std::vector<std::shared_ptr<AccessibilityElement>> accessibilityWindows(const Accessibility& accessibility,
                                                                        ProcessIdentifier process);

/// Empty when it cannot be read or is no boolean.
std::optional<bool> isFullscreen(const AccessibilityElement& window);
AccessibilityError setFullscreen(AccessibilityElement& window, bool fullscreen);

/// The application's window with the keyboard focus; null when it cannot be read.
std::shared_ptr<AccessibilityElement> accessibilityFocusedWindow(const Accessibility& accessibility,
                                                                 ProcessIdentifier process);

/// What cannot be read of it is 0.
Rect accessibilityFrame(const AccessibilityElement& window);

/// Moves and then resizes the window; what comes of it is not looked at.
void setFrame(AccessibilityElement& window, const Rect& frame);

/// Presses the window's close button, if it has one.
void pressCloseButton(const AccessibilityElement& window);

}  // namespace vantrel
