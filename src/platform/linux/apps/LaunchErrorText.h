#pragma once

#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

/// Tells the user why an executable was not started. `error` is the errno value of the attempt.
std::string launchErrorText(std::string_view executablePath, int error);

}  // namespace vantrel::linuxdesktop
