#pragma once

#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/desktop/WindowList.h"

namespace vantrel {

/// What the window list says about a browser's windows. Only entries of the process, of layer 0 and with bounds count.
/// An entry that lacks one of these keys does not count.

/// A window wider and higher than 0.6 of the screen.
bool hasLargeWindow(const std::vector<WindowEntry>& windows, ProcessIdentifier process, const Size& screen);
/// The same for windows on the screen only. A window on another Space is not on the screen.
bool hasLargeWindowOnScreen(const std::vector<WindowEntry>& windows, ProcessIdentifier process, const Size& screen);

/// A window wider than 200 points and higher than 100, wherever it is.
bool hasWindowAtAll(const std::vector<WindowEntry>& windows, ProcessIdentifier process);

}  // namespace vantrel
