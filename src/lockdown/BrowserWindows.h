#pragma once

#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/desktop/WindowList.h"

namespace vantrel {

/// What the window list tells of a browser's windows. Only entries of the process, of layer 0 and with bounds count;
/// an entry without one of these keys does not.

/// Wider and higher than 0.6 of the screen.
bool hasLargeWindow(const std::vector<WindowEntry>& windows, ProcessIdentifier process, const Size& screen);
/// The same among those that are on the screen: a window on another Space is not.
bool hasLargeWindowOnScreen(const std::vector<WindowEntry>& windows, ProcessIdentifier process, const Size& screen);

/// Wider than 200 points and higher than 100, wherever it is.
bool hasWindowAtAll(const std::vector<WindowEntry>& windows, ProcessIdentifier process);

}  // namespace vantrel
