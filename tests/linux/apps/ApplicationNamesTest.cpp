#include <gtest/gtest.h>

#include "platform/linux/apps/ApplicationNames.h"

namespace vantrel::linuxdesktop {
namespace {

std::string identifier(std::string_view path, const std::vector<std::string>& arguments = {}) {
    return std::string(applicationName(path, arguments).bundleIdentifier);
}

TEST(ApplicationNames, KnowsTheClientAndTheBrowsersByTheirExecutables) {
    EXPECT_EQ(identifier("/usr/bin/vantrel"), "biz.quorrin.vantrel");
    EXPECT_EQ(identifier("/usr/lib/chromium/chromium"), "com.google.Chrome");
    EXPECT_EQ(identifier("/opt/google/chrome/chrome"), "com.google.Chrome");
    EXPECT_EQ(identifier("/usr/bin/chromium-browser"), "com.google.Chrome");
    EXPECT_EQ(identifier("/usr/lib/firefox-esr/firefox-esr"), "org.mozilla.firefox");
    EXPECT_EQ(identifier("/opt/microsoft/msedge/msedge"), "com.microsoft.edgemac");
    EXPECT_EQ(applicationName("/opt/microsoft/msedge/msedge", {}).localizedName, "Microsoft Edge");
}

TEST(ApplicationNames, TakesTheBundleFolderBeforeTheFile) {
    EXPECT_EQ(identifier("/home/x/Applications/Google Chrome.app/Contents/MacOS/firefox"), "com.google.Chrome");
    EXPECT_EQ(identifier("/Applications/Safari.app/Contents/MacOS/Safari"), "com.apple.Safari");
}

TEST(ApplicationNames, KnowsNothingElse) {
    EXPECT_EQ(identifier("/usr/bin/vantrel-practice"), "");
    EXPECT_EQ(identifier("/home/vantrel/bin/sh"), "");
    EXPECT_EQ(identifier("/opt/Other.app/Contents/MacOS/Other"), "");
    EXPECT_EQ(identifier(""), "");
}

TEST(ApplicationNames, LeavesOutTheHelperProcessesOfBrowsers) {
    EXPECT_EQ(identifier("/usr/lib/chromium/chromium", {"chromium", "--type=renderer"}), "");
    EXPECT_EQ(identifier("/usr/lib/firefox-esr/firefox-esr", {"firefox-esr", "-contentproc", "7"}), "");
    EXPECT_EQ(identifier("/usr/lib/chromium/chromium", {"chromium", "--app=https://x"}), "com.google.Chrome");
}

TEST(ApplicationNames, LeavesOutAHelperThatWroteItsCommandLineAnew) {
    EXPECT_EQ(identifier("/usr/lib/chromium/chromium", {"/usr/lib/chromium/chromium --type=zygote --no-sandbox"}), "");
    EXPECT_EQ(identifier("/usr/lib/chromium/chromium", {"chromium", "--app=https://x/?a --type=b"}),
              "com.google.Chrome");
}

TEST(ApplicationNames, KnowsTheBrowsersByTheClassOfTheirWindows) {
    EXPECT_EQ(applicationNameOfClass("Google-chrome").bundleIdentifier, "com.google.Chrome");
    EXPECT_EQ(applicationNameOfClass("Chromium").bundleIdentifier, "com.google.Chrome");
    EXPECT_EQ(applicationNameOfClass("Microsoft-edge").bundleIdentifier, "com.microsoft.edgemac");
    EXPECT_EQ(applicationNameOfClass("firefox-esr").bundleIdentifier, "org.mozilla.firefox");
    EXPECT_EQ(applicationNameOfClass("Firefox").localizedName, "Firefox");
    EXPECT_EQ(applicationNameOfClass("XTerm").bundleIdentifier, "");
    EXPECT_EQ(applicationNameOfClass("").bundleIdentifier, "");
}

TEST(ApplicationNames, StillKnowsAnExecutableThatWasReplacedWhileItRuns) {
    EXPECT_EQ(identifier("/usr/bin/vantrel (deleted)"), "biz.quorrin.vantrel");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
