#pragma once

#include <string>

namespace vantrel::linuxdesktop {

/// HOME, or else what the user's account says. Without a trailing slash. Any thread.
std::string homeOfThisUser();

}  // namespace vantrel::linuxdesktop
