#include "platform/linux/system/LinuxFileManager.h"

#include <filesystem>
#include <system_error>

#include "platform/linux/system/HomeDirectory.h"
#include "platform/linux/system/InstalledBrowsers.h"

namespace vantrel::linuxdesktop {

bool LinuxFileManager::fileExists(std::string_view path) const {
    // The kernel would stop at a zero byte and find another file.
    if (path.empty() || path.find('\0') != std::string_view::npos) return false;
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::path(path), error) && !error) return true;
    return installedBrowser(path).has_value();
}

std::string LinuxFileManager::homeDirectory() const {
    return homeOfThisUser();
}

}  // namespace vantrel::linuxdesktop
