#pragma once

#include <filesystem>
#include <optional>

#include "platform/network/URLs.h"

namespace vantrel::linuxdesktop {

/// The folder `Name.app` that a file URL names, percent-decoded. Empty for any other URL.
std::optional<std::filesystem::path> applicationFolder(const URL& url);

/// The executable in a folder `Name.app`: the file `Name` in Contents/MacOS, or else the only file there. If neither
/// exists, the path that `Name` would have.
std::filesystem::path applicationExecutable(const std::filesystem::path& folder);

}  // namespace vantrel::linuxdesktop
