#pragma once

#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// Starts a program that goes its own way: looked for along PATH, with the client's environment and streams but its
/// signals as usual, and reaped when it ends. False when it cannot be started.
bool startDetached(const std::vector<std::string>& arguments);

}  // namespace vantrel::linuxdesktop
