#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/system/InstalledBrowsers.h"
#include "platform/linux/system/LinuxFileManager.h"
#include "tests/linux/support/InstalledCommands.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

const std::string chrome = "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome";
const std::string edge = "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge";
const std::string firefox = "/Applications/Firefox.app/Contents/MacOS/firefox";
const std::string safari = "/Applications/Safari.app/Contents/MacOS/Safari";

// Only the test's own commands are on PATH. A computer with Chrome in /opt has it all the same, so most tests ask for
// other browsers, or have a command that comes before.
class InstalledBrowsersTest : public testing::Test {
  protected:
    void SetUp() override { InstalledCommands::search(commands.folder().string()); }

    static std::string programFor(const std::string& path) {
        const auto installed = installedBrowser(path);
        return installed ? installed->program : "(none)";
    }

    void remove(const std::string& command) const { std::filesystem::remove(commands.folder() / command); }

    TemporaryFolder folder;
    InstalledCommands commands{folder.path()};
    const LinuxFileManager files;
};

TEST_F(InstalledBrowsersTest, ABrowserIsTheFirstOfItsCommandsThatIsInstalled) {
    const bool hasChromeInOpt = std::filesystem::exists("/opt/google/chrome/google-chrome");
    for (const auto& [executable, names] :
         {std::pair{chrome,
                    std::vector<std::string>{"chromium-browser", "chromium", "google-chrome-stable", "google-chrome"}},
          std::pair{edge, std::vector<std::string>{"microsoft-edge-stable", "microsoft-edge"}},
          std::pair{firefox, std::vector<std::string>{"firefox-esr", "firefox"}}}) {
        for (const std::string& name : names) {
            const std::string program = commands.install(name);
            const bool isLater = hasChromeInOpt && executable == chrome && name != "google-chrome";
            EXPECT_EQ(programFor(executable), isLater ? "/opt/google/chrome/google-chrome" : program);
        }
    }
}

TEST_F(InstalledBrowsersTest, AnEarlierCommandInALaterFolderComesFirst) {
    commands.install("microsoft-edge-stable");
    InstalledCommands::search(commands.folder().string() + ":" + (commands.folder() / "later").string());
    const std::string program = commands.install("later/microsoft-edge");
    EXPECT_EQ(programFor(edge), program);
    commands.install("microsoft-edge");
    EXPECT_EQ(programFor(edge), (commands.folder() / "microsoft-edge").string()) << "of the same, the first folder's";
}

TEST_F(InstalledBrowsersTest, ItsFolderAndItsExecutableExistAsOnMacOS) {
    const std::string program = commands.install("microsoft-edge");
    for (const std::string& path : {edge, std::string("/Applications/Microsoft Edge.app")}) {
        EXPECT_TRUE(files.fileExists(path)) << path;
        EXPECT_EQ(programFor(path), program);
        EXPECT_EQ(installedBrowser(path)->executable, edge);
    }
    for (const std::string& path : {edge + "/x", edge + std::string(1, '\0'), "." + edge, std::string("/Applications"),
                                    std::string("/Applications/Microsoft Edge.app/Contents/MacOS/microsoft-edge"),
                                    commands.home().string() + edge, firefox, safari}) {
        EXPECT_FALSE(files.fileExists(path)) << path;
        EXPECT_EQ(programFor(path), "(none)");
    }
}

TEST_F(InstalledBrowsersTest, ABrowserCountsFromItsInstallationToItsRemoval) {
    EXPECT_FALSE(files.fileExists(edge));
    commands.install("microsoft-edge");
    EXPECT_TRUE(files.fileExists(edge));
    remove("microsoft-edge");
    EXPECT_FALSE(files.fileExists(edge));
}

TEST_F(InstalledBrowsersTest, OnlyAFileThatCanBeExecutedIsABrowser) {
    std::filesystem::create_directories(commands.folder() / "microsoft-edge");
    EXPECT_EQ(programFor(edge), "(none)") << "a folder";
    std::filesystem::create_symlink("/nowhere/edge", commands.folder() / "microsoft-edge-stable");
    EXPECT_EQ(programFor(edge), "(none)") << "a broken link";
    remove("microsoft-edge-stable");
    std::filesystem::create_symlink(commands.install("elsewhere/edge"), commands.folder() / "microsoft-edge-stable");
    EXPECT_EQ(programFor(edge), (commands.folder() / "microsoft-edge-stable").string()) << "a link to a program";
    std::filesystem::permissions(commands.folder() / "elsewhere/edge", std::filesystem::perms::owner_read);
    EXPECT_EQ(programFor(edge), "(none)") << "not executable";
}

TEST_F(InstalledBrowsersTest, WhatLiesInARelativeFolderOfThePathIsNoBrowser) {
    commands.install("microsoft-edge");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(commands.folder());
    for (const char* path : {"", ".", ":", ":/nowhere", "/nowhere::/nowhere", "/nowhere:", "../bin", "./:../bin/:."}) {
        InstalledCommands::search(path);
        EXPECT_EQ(programFor(edge), "(none)") << path;
    }
    unsetenv("PATH");
    EXPECT_EQ(programFor(edge), "(none)");
    InstalledCommands::search(".:" + commands.folder().string() + "/:");
    EXPECT_EQ(programFor(edge), (commands.folder() / "microsoft-edge").string());
    std::filesystem::current_path(before);
}

TEST_F(InstalledBrowsersTest, AnExecutableInTheUsersApplicationsComesFirst) {
    const std::string program = commands.install("microsoft-edge");
    const std::filesystem::path own = commands.home().string() + edge;
    std::filesystem::create_directories(own.parent_path());
    EXPECT_EQ(programFor(edge), program) << "an empty folder is no browser";
    std::filesystem::create_symlink("/nowhere/edge", own);
    EXPECT_EQ(programFor(edge), program) << "nor is a link to one that was removed";
    std::filesystem::remove(own);
    std::filesystem::create_symlink(program, own);
    EXPECT_EQ(programFor(edge), "(none)");
    EXPECT_FALSE(files.fileExists(edge)) << "so that the rules, which ask here first, go on to the user's";
    EXPECT_TRUE(files.fileExists(own.string()));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
