#include "platform/linux/ApplicationNames.h"

#include <algorithm>
#include <array>

namespace vantrel::linuxdesktop {

namespace {

struct Entry {
    std::string_view file;
    ApplicationName name;
};

constexpr ApplicationName vantrelName{ownBundleIdentifier, "Vantrel"};
constexpr ApplicationName chromeName{"com.google.Chrome", "Google Chrome"};
constexpr ApplicationName edgeName{"com.microsoft.edgemac", "Microsoft Edge"};
constexpr ApplicationName firefoxName{"org.mozilla.firefox", "Firefox"};

// Bundle folders first, then the executables as Debian and the makers install them.
constexpr std::array entries{
    Entry{"Vantrel.app", vantrelName},
    Entry{"Google Chrome.app", chromeName},
    Entry{"Microsoft Edge.app", edgeName},
    Entry{"Firefox.app", firefoxName},
    Entry{"Safari.app", {"com.apple.Safari", "Safari"}},
    Entry{"vantrel", vantrelName},
    Entry{"google-chrome", chromeName},
    Entry{"google-chrome-stable", chromeName},
    Entry{"chrome", chromeName},
    Entry{"chromium", chromeName},
    Entry{"microsoft-edge", edgeName},
    Entry{"microsoft-edge-stable", edgeName},
    Entry{"msedge", edgeName},
    Entry{"firefox", firefoxName},
    Entry{"firefox-esr", firefoxName},
    Entry{"firefox-bin", firefoxName},
};

bool isHelper(const std::vector<std::string>& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.rfind("--type=", 0) == 0 || argument == "-contentproc";
    });
}

}  // namespace

ApplicationName applicationName(std::string_view executablePath, const std::vector<std::string>& arguments) {
    constexpr std::string_view replaced = " (deleted)";
    if (executablePath.ends_with(replaced)) executablePath.remove_suffix(replaced.size());
    if (isHelper(arguments)) return {};

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

}  // namespace vantrel::linuxdesktop
