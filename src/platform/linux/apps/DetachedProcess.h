#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// Starts a program of the desktop's that goes its own way, looked for along PATH; see startReaped(). False when it
/// cannot be started.
bool startDetached(const std::vector<std::string>& arguments);

}  // namespace vantrel::linuxdesktop
