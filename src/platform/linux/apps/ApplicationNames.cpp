#include "platform/linux/apps/ApplicationNames.h"

#include <algorithm>
#include <array>

namespace vantrel::linuxdesktop {

namespace {

struct Entry {
    std::string_view file;
    ApplicationName name;
};

constexpr ApplicationName chromeName{"com.google.Chrome", "Google Chrome"};
constexpr ApplicationName edgeName{"com.microsoft.edgemac", "Microsoft Edge"};
constexpr ApplicationName firefoxName{"org.mozilla.firefox", "Firefox"};

// Bundle folders first, then the executables as Debian and the browsers' makers install them.
constexpr std::array entries{
    Entry{"Vantrel.app", ownApplicationName},
    Entry{"Google Chrome.app", chromeName},
    Entry{"Microsoft Edge.app", edgeName},
    Entry{"Firefox.app", firefoxName},
    Entry{"Safari.app", {"com.apple.Safari", "Safari"}},
    Entry{"vantrel", ownApplicationName},
    Entry{"google-chrome", chromeName},
    Entry{"google-chrome-stable", chromeName},
    Entry{"chrome", chromeName},
    Entry{"chromium", chromeName},
    Entry{"chromium-browser", chromeName},
    Entry{"microsoft-edge", edgeName},
    Entry{"microsoft-edge-stable", edgeName},
    Entry{"msedge", edgeName},
    Entry{"firefox", firefoxName},
    Entry{"firefox-esr", firefoxName},
    Entry{"firefox-bin", firefoxName},
};

// As Debian and the browsers' makers set it, but in lower case: they do not agree about capitals.
constexpr std::array classes{
    Entry{"google-chrome", chromeName},        Entry{"chromium", chromeName}, Entry{"chromium-browser", chromeName},
    Entry{"microsoft-edge", edgeName},         Entry{"firefox", firefoxName}, Entry{"firefox-esr", firefoxName},
    Entry{"org.mozilla.firefox", firefoxName},
};

std::string lowerCased(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

}  // namespace

ApplicationName applicationName(std::string_view executablePath, const std::vector<std::string>& arguments) {
    constexpr std::string_view replaced = " (deleted)";
    if (executablePath.ends_with(replaced)) executablePath.remove_suffix(replaced.size());
    if (isHelperProcess(arguments)) return {};

    std::string_view rest = executablePath;
    while (!rest.empty()) {
        const std::size_t slash = rest.find('/');
        const std::string_view component = rest.substr(0, slash);
        const bool last = slash == std::string_view::npos;
        if (last || component.ends_with(".app")) {
            const auto* entry = std::find_if(entries.begin(), entries.end(),
                                             [component](const Entry& entry) { return entry.file == component; });
            if (entry != entries.end()) return entry->name;
        }
        if (last) break;
        rest.remove_prefix(slash + 1);
    }
    return {};
}

ApplicationName applicationNameOfClass(std::string_view windowClass) {
    const auto* entry =
        std::find_if(classes.begin(), classes.end(),
                     [name = lowerCased(windowClass)](const Entry& entry) { return entry.file == name; });
    return entry != classes.end() ? entry->name : ApplicationName{};
}

bool isHelperProcess(const std::vector<std::string>& arguments) {
    constexpr std::string_view type = "--type=";
    // Chromium's helpers rewrite their command line as one text with spaces.
    if (arguments.size() == 1 && arguments.front().find(" --type=") != std::string::npos) return true;
    return std::any_of(arguments.begin(), arguments.end(), [type](const std::string& argument) {
        return argument.rfind(type, 0) == 0 || argument == "-contentproc";
    });
}

}  // namespace vantrel::linuxdesktop
