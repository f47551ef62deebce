#include "platform/linux/system/OwnEnvironment.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>

namespace vantrel::linuxdesktop {

namespace {

std::optional<std::string> value(const std::string& name) {
    const char* found = std::getenv(name.c_str());
    return found != nullptr ? std::optional<std::string>(found) : std::nullopt;
}

// The variables that were changed, with what they were before. Never destroyed: a background thread may start a program
// while the process ends.
std::map<std::string, std::optional<std::string>>& changed() {
    static auto* all =
        new std::map<std::string, std::optional<std::string>>;  // NOLINT(cppcoreguidelines-owning-memory)
    return *all;
}

}  // namespace

void OwnEnvironment::set(const std::string& name, const std::string& text) {
    changed().try_emplace(name, value(name));
    setenv(name.c_str(), text.c_str(), 1);
}

void OwnEnvironment::unset(const std::string& name) {
    changed().try_emplace(name, value(name));
    unsetenv(name.c_str());
}

std::vector<std::string> OwnEnvironment::ofOthers() {
    std::vector<std::string> all;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string text = *entry;
        if (changed().count(text.substr(0, text.find('='))) == 0) all.push_back(text);
    }
    for (const auto& [name, before] : changed()) {
        if (before) all.push_back(name + "=" + *before);
    }
    return all;
}

void keepLibdbusFromStartingABus() {
    constexpr const char* address = "DBUS_SESSION_BUS_ADDRESS";
    if (!value(address).value_or("").empty()) return;
    std::error_code error;
    const auto folder = value("XDG_RUNTIME_DIR").value_or("");
    if (!folder.empty() && std::filesystem::is_socket(folder + "/bus", error)) return;
    OwnEnvironment::set(address, "disabled:");
}

}  // namespace vantrel::linuxdesktop
