#pragma once

#include <string>
#include <vector>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// The class in WM_CLASS of each window, the second of its two names. Empty if a window has none or is gone. Any
/// thread.
std::vector<std::string> windowClasses(X11Connection& connection, const std::vector<xcb_window_t>& windows);

}  // namespace vantrel::linuxdesktop
