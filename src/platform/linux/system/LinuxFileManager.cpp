#include "platform/linux/system/LinuxFileManager.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace vantrel::linuxdesktop {

namespace {

std::string homeFromAccount() {
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 4096> buffer;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return "/";
    return entry.pw_dir;
}

}  // namespace

bool LinuxFileManager::fileExists(std::string_view path) const {
    // The kernel would stop at a zero byte and find another file.
    if (path.empty() || path.find('\0') != std::string_view::npos) return false;
    std::error_code error;
    return std::filesystem::exists(std::filesystem::path(path), error) && !error;
}

std::string LinuxFileManager::homeDirectory() const {
    const char* variable = std::getenv("HOME");
    std::string home = variable != nullptr && variable[0] != '\0' ? std::string(variable) : homeFromAccount();
    while (home.size() > 1 && home.back() == '/') home.pop_back();
    return home;
}

}  // namespace vantrel::linuxdesktop
