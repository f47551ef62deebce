#pragma once

#include <string>

namespace vantrel::linuxdesktop {

/// The contents of a file under /proc, at most 4 MiB. Empty if it cannot be read.
std::string readProcFile(const std::string& path);

}  // namespace vantrel::linuxdesktop
