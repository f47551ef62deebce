#pragma once

#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

/// Why an executable was not started, for the user: `error` is the errno value of the attempt.
std::string launchErrorText(std::string_view executablePath, int error);

}  // namespace vantrel::linuxdesktop
