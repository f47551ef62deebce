#include "platform/linux/system/HomeDirectory.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

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

std::string homeOfThisUser() {
    const char* variable = std::getenv("HOME");
    std::string home = variable != nullptr && variable[0] != '\0' ? std::string(variable) : homeFromAccount();
    while (home.size() > 1 && home.back() == '/') home.pop_back();
    return home;
}

}  // namespace vantrel::linuxdesktop
