#include "platform/linux/system/InstalledBrowsers.h"

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "platform/linux/system/HomeDirectory.h"

namespace vantrel::linuxdesktop {

namespace {

struct Known {
    std::string_view folder;
    std::string_view executable;
    // The last ones may be empty.
    std::array<std::string_view, 4> commands;
};

// Chromium counts as Chrome.
constexpr std::array known{
    Known{"/Applications/Google Chrome.app",
          "Google Chrome",
          {"google-chrome", "google-chrome-stable", "chromium", "chromium-browser"}},
    Known{"/Applications/Microsoft Edge.app", "Microsoft Edge", {"microsoft-edge", "microsoft-edge-stable"}},
    Known{"/Applications/Firefox.app", "firefox", {"firefox", "firefox-esr"}},
};

constexpr std::string_view folderOfChrome = "/opt/google/chrome";

bool exists(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(path, error) && !error;
}

bool canBeStarted(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

std::vector<std::filesystem::path> searchedFolders() {
    std::vector<std::filesystem::path> folders;
    const char* variable = std::getenv("PATH");
    std::string_view rest = variable != nullptr ? variable : "";
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        if (folder.starts_with('/')) folders.emplace_back(folder);
        rest.remove_prefix(folder.size() < rest.size() ? folder.size() + 1 : rest.size());
    }
    folders.emplace_back(folderOfChrome);
    return folders;
}

std::optional<std::string> programOf(const Known& browser) {
    const auto folders = searchedFolders();
    for (const std::string_view command : browser.commands) {
        if (command.empty()) break;
        for (const auto& folder : folders) {
            if (canBeStarted(folder / command)) return (folder / command).string();
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<InstalledBrowser> installedBrowser(std::string_view path) {
    for (const Known& browser : known) {
        const std::string executable =
            std::string(browser.folder) + "/Contents/MacOS/" + std::string(browser.executable);
        if (path != browser.folder && path != executable) continue;
        if (exists(executable) || exists(homeOfThisUser() + executable)) return std::nullopt;
        const auto program = programOf(browser);
        if (!program) return std::nullopt;
        return InstalledBrowser{executable, *program};
    }
    return std::nullopt;
}

}  // namespace vantrel::linuxdesktop
