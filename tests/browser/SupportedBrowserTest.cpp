#include <gmock/gmock.h>

#include <set>

#include "browser/SupportedBrowser.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Files final : public FileManager {
  public:
    bool fileExists(std::string_view path) const override { return paths.contains(path); }
    std::string homeDirectory() const override { return home; }

    std::set<std::string, std::less<>> paths;
    std::string home = "/Users/x";
};

constexpr const char* chromePath = "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome";
constexpr const char* edgePath = "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge";
constexpr const char* firefoxPath = "/Applications/Firefox.app/Contents/MacOS/firefox";
constexpr const char* safariPath = "/Applications/Safari.app/Contents/MacOS/Safari";

TEST(SupportedBrowser, ComesInTheOrderOfItsDeclaration) {
    EXPECT_THAT(allSupportedBrowsers, ElementsAre(SupportedBrowser::chrome, SupportedBrowser::firefox,
                                                  SupportedBrowser::edge, SupportedBrowser::safari));
}

TEST(SupportedBrowser, IsPreferredInAnotherOrder) {
    EXPECT_THAT(browserDetectionOrder, ElementsAre(SupportedBrowser::chrome, SupportedBrowser::edge,
                                                   SupportedBrowser::safari, SupportedBrowser::firefox));
}

TEST(SupportedBrowser, HasItsBundleIdentifierAsRawValue) {
    EXPECT_EQ(rawValue(SupportedBrowser::chrome), "com.google.Chrome");
    EXPECT_EQ(rawValue(SupportedBrowser::firefox), "org.mozilla.firefox");
    EXPECT_EQ(rawValue(SupportedBrowser::edge), "com.microsoft.edgemac");
    EXPECT_EQ(rawValue(SupportedBrowser::safari), "com.apple.Safari");
}

TEST(SupportedBrowser, IsMadeFromItsBundleIdentifier) {
    for (const auto browser : allSupportedBrowsers) EXPECT_EQ(supportedBrowser(rawValue(browser)), browser);
}

TEST(SupportedBrowser, IsMadeFromNothingElse) {
    for (const char* text : {"com.google.chrome", "com.google.Chrome ", " com.google.Chrome", "com.google.Chrom",
                             "com.google.Chrome.canary", "Google Chrome", "chrome", ""}) {
        EXPECT_EQ(supportedBrowser(text), std::nullopt) << text;
    }
}

TEST(SupportedBrowser, HasADisplayName) {
    EXPECT_EQ(displayName(SupportedBrowser::chrome), "Google Chrome");
    EXPECT_EQ(displayName(SupportedBrowser::firefox), "Firefox");
    EXPECT_EQ(displayName(SupportedBrowser::edge), "Microsoft Edge");
    EXPECT_EQ(displayName(SupportedBrowser::safari), "Safari");
}

TEST(SupportedBrowser, LiesInTheSystemsFolderOrThenInTheHomeFolder) {
    const Files files;
    EXPECT_THAT(executableCandidates(SupportedBrowser::chrome, files),
                ElementsAre(chromePath, std::string("/Users/x") + chromePath));
    EXPECT_THAT(executableCandidates(SupportedBrowser::firefox, files),
                ElementsAre(firefoxPath, std::string("/Users/x") + firefoxPath));
    EXPECT_THAT(executableCandidates(SupportedBrowser::edge, files),
                ElementsAre(edgePath, std::string("/Users/x") + edgePath));
}

TEST(SupportedBrowser, LooksForSafariInTheSystemsFolderOnly) {
    EXPECT_THAT(executableCandidates(SupportedBrowser::safari, Files()), ElementsAre(safariPath));
}

TEST(SupportedBrowser, ReadsTheHomeFolderEachTime) {
    Files files;
    executableCandidates(SupportedBrowser::chrome, files);
    files.home = "/Volumes/case/maria";
    EXPECT_EQ(executableCandidates(SupportedBrowser::chrome, files)[1],
              "/Volumes/case/maria/Applications/Google Chrome.app/Contents/MacOS/Google Chrome");
}

TEST(SupportedBrowser, StartsAChromiumWithEightArguments) {
    for (const auto browser : {SupportedBrowser::chrome, SupportedBrowser::edge}) {
        EXPECT_THAT(launchArguments(browser, "https://meet.example/a b?c='\"$(d)"),
                    ElementsAre("--app=https://meet.example/a b?c='\"$(d)", "--new-window", "--no-first-run",
                                "--no-default-browser-check", "--disable-extensions", "--disable-tab-strip",
                                "--disable-session-crashed-bubble", "--disable-infobars"));
    }
}

TEST(SupportedBrowser, StartsTheOthersWithoutArguments) {
    EXPECT_THAT(launchArguments(SupportedBrowser::firefox, "https://meet.example/"), IsEmpty());
    EXPECT_THAT(launchArguments(SupportedBrowser::safari, "https://meet.example/"), IsEmpty());
}

struct Installed {
    const char* name;
    std::set<std::string, std::less<>> paths;
    SupportedBrowser detected;
};

class Detection : public testing::TestWithParam<Installed> {};

TEST_P(Detection, PicksTheFirstOfThePreference) {
    Files files;
    files.paths = GetParam().paths;
    EXPECT_EQ(detectSupportedBrowser(files), GetParam().detected);
}

std::string inHome(const char* path) {
    return std::string("/Users/x") + path;
}

INSTANTIATE_TEST_SUITE_P(
    SupportedBrowser, Detection,
    testing::Values(Installed{"chromeInHomeOnly", {inHome(chromePath)}, SupportedBrowser::chrome},
                    Installed{"chromeInHomeBeforeEdge", {inHome(chromePath), edgePath}, SupportedBrowser::chrome},
                    Installed{"everything", {chromePath, edgePath, firefoxPath, safariPath}, SupportedBrowser::chrome},
                    Installed{"edgeAndFirefox", {edgePath, firefoxPath}, SupportedBrowser::edge},
                    Installed{"edgeAndSafari", {edgePath, safariPath}, SupportedBrowser::edge},
                    Installed{"edgeInHomeBeforeSafari", {inHome(edgePath), safariPath}, SupportedBrowser::edge},
                    Installed{"firefoxAndSafari", {firefoxPath, safariPath}, SupportedBrowser::safari},
                    Installed{"firefoxOnly", {firefoxPath}, SupportedBrowser::firefox},
                    Installed{"firefoxInHomeOnly", {inHome(firefoxPath)}, SupportedBrowser::firefox},
                    Installed{"safariInHomeDoesNotCount", {inHome(safariPath), firefoxPath}, SupportedBrowser::firefox},
                    Installed{"safariOnly", {safariPath}, SupportedBrowser::safari},
                    Installed{"nothing", {}, SupportedBrowser::safari}),
    [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace vantrel
