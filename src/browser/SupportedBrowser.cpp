#include "browser/SupportedBrowser.h"

#include <algorithm>

namespace vantrel {
namespace {

struct Facts {
    std::string_view bundleIdentifier;
    std::string_view displayName;
    std::string_view systemPath;
    bool mayLieInHome;
    bool isChromium;
};

constexpr Facts facts(SupportedBrowser browser) {
    switch (browser) {
        case SupportedBrowser::chrome:
            return {"com.google.Chrome", "Google Chrome",
                    "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome", true, true};
        case SupportedBrowser::firefox:
            return {"org.mozilla.firefox", "Firefox", "/Applications/Firefox.app/Contents/MacOS/firefox", true, false};
        case SupportedBrowser::edge:
            return {"com.microsoft.edgemac", "Microsoft Edge",
                    "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge", true, true};
        case SupportedBrowser::safari:
            break;
    }
    return {"com.apple.Safari", "Safari", "/Applications/Safari.app/Contents/MacOS/Safari", false, false};
}

}  // namespace

std::string_view rawValue(SupportedBrowser browser) {
    return facts(browser).bundleIdentifier;
}

std::optional<SupportedBrowser> supportedBrowser(std::string_view rawValue) {
    for (const auto browser : allSupportedBrowsers) {
        if (facts(browser).bundleIdentifier == rawValue) return browser;
    }
    return std::nullopt;
}

std::string_view displayName(SupportedBrowser browser) {
    return facts(browser).displayName;
}

std::vector<std::string> executableCandidates(SupportedBrowser browser, const FileManager& files) {
    const Facts known = facts(browser);
    std::vector<std::string> candidates{std::string(known.systemPath)};
    if (known.mayLieInHome) candidates.push_back(files.homeDirectory() + std::string(known.systemPath));
    return candidates;
}

std::vector<std::string> launchArguments(SupportedBrowser browser, const std::string& meetURL) {
    if (!facts(browser).isChromium) return {};
    return {"--app=" + meetURL,
            "--new-window",
            "--no-first-run",
            "--no-default-browser-check",
            "--disable-extensions",
            "--disable-tab-strip",
            "--disable-session-crashed-bubble",
            "--disable-infobars"};
}

SupportedBrowser detectSupportedBrowser(const FileManager& files) {
    for (const auto browser : browserDetectionOrder) {
        const auto candidates = executableCandidates(browser, files);
        const auto exists = [&files](const std::string& path) { return files.fileExists(path); };
        if (std::any_of(candidates.begin(), candidates.end(), exists)) return browser;
    }
    return SupportedBrowser::safari;
}

}  // namespace vantrel
