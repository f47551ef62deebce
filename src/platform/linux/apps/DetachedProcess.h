#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// Starts a program of the desktop, found through PATH, and does not follow it; see startReaped(). False if it cannot
/// be started.
bool startDetached(const std::vector<std::string>& arguments);

}  // namespace vantrel::linuxdesktop
