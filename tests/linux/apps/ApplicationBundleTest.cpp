#include <gtest/gtest.h>

#include "platform/linux/apps/ApplicationBundle.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

TEST(ApplicationBundle, ReadsTheFolderOutOfAFileURL) {
    EXPECT_EQ(applicationFolder(URL{"file:///Applications/Safari.app"}), "/Applications/Safari.app");
    EXPECT_EQ(applicationFolder(URL{"file:///Applications/Safari.app/"}), "/Applications/Safari.app");
    EXPECT_EQ(applicationFolder(URL{"file://localhost/Applications/Safari.app"}), "/Applications/Safari.app");
    EXPECT_EQ(applicationFolder(URL{"file:/Applications/Safari.app"}), "/Applications/Safari.app");
    EXPECT_EQ(applicationFolder(URL{"file:///a%20b/Perch%C3%A9%20%25.app?x#y"}), "/a b/Perché %.app");
    EXPECT_EQ(applicationFolder(URL{"file:///a%2/b%zz.app"}), "/a%2/b%zz.app");
}

TEST(ApplicationBundle, TakesNothingElseForAnApplication) {
    for (const char* address : {"", "https://x.example/Safari.app", "file://server/Safari.app",
                                "/Applications/Safari.app", "file:///etc/hostname", "file:///a%00b.app"}) {
        EXPECT_FALSE(applicationFolder(URL{address})) << address;
    }
}

TEST(ApplicationBundle, TheExecutableIsCalledAfterTheFolderOrIsTheOnlyFile) {
    const TemporaryFolder parent;
    const auto folder = parent.path() / "Firefox.app";
    const auto executables = folder / "Contents/MacOS";
    EXPECT_EQ(applicationExecutable(folder), executables / "Firefox");
    std::filesystem::create_directories(executables / "subfolder");
    writeContents(executables / "firefox", "");
    EXPECT_EQ(applicationExecutable(folder), executables / "firefox");
    writeContents(executables / "other", "");
    EXPECT_EQ(applicationExecutable(folder), executables / "Firefox");
    writeContents(executables / "Firefox", "");
    EXPECT_EQ(applicationExecutable(folder), executables / "Firefox");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
