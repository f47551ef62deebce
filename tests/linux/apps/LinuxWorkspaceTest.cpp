#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/linux/apps/LinuxWorkspace.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

// The test's own openers, alone on PATH, which write down what they were asked to open.
class LinuxWorkspaceTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        before = getenv("PATH");
        setenv("PATH", folder.path().c_str(), 1);
    }

    void TearDown() override {
        setenv("PATH", before.c_str(), 1);
        DesktopTest::TearDown();
    }

    void install(const std::string& name) const {
        const auto program = folder.path() / name;
        // Written under another name first, so that the file appears complete.
        writeContents(program, "#!/bin/sh\necho \"$$ " + name + " $*\" >" + record().string() + ".new\n/bin/mv " +
                                   record().string() + ".new " + record().string() + "\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }

    std::filesystem::path record() const { return folder.path() / "record"; }

    // The opener's arguments, without the process identifier.
    std::string opened(pid_t& process) const {
        if (!waitUntil([this] { return std::filesystem::exists(record()); })) return "(nothing)";
        std::ifstream stream(record());
        std::string arguments;
        stream >> process;
        stream.get();
        std::getline(stream, arguments);
        return arguments;
    }

    // A zombie is still listed.
    static bool isListed(pid_t process) { return std::filesystem::exists("/proc/" + std::to_string(process)); }

    std::string before;
};

TEST_F(LinuxWorkspaceTest, HandsTheAddressToTheDesktopsOpenerAndReapsIt) {
    install("xdg-open");
    EXPECT_TRUE(computer->workspace.open(URL{"https://server.example/a?b=1&c='d'"}));
    pid_t process = 0;
    EXPECT_EQ(opened(process), "xdg-open https://server.example/a?b=1&c='d'");
    ASSERT_GT(process, 0);
    EXPECT_TRUE(waitUntil([process] { return !isListed(process); }));
}

TEST_F(LinuxWorkspaceTest, TriesTheSecondOpenerWhenThereIsNoFirst) {
    install("gio");
    EXPECT_TRUE(computer->workspace.open(URL{"https://server.example/"}));
    pid_t process = 0;
    EXPECT_EQ(opened(process), "gio open https://server.example/");
}

TEST_F(LinuxWorkspaceTest, SaysSoWhenThereIsNoOpener) {
    EXPECT_FALSE(computer->workspace.open(URL{"https://server.example/"}));
}

TEST_F(LinuxWorkspaceTest, OpensNothingWithoutAScheme) {
    install("xdg-open");
    for (const char* address : {"", "server.example", "/etc/hostname", "--help", "1a:b", ":x"}) {
        EXPECT_FALSE(computer->workspace.open(URL{address})) << address;
    }
    turnFor(0.2);
    EXPECT_FALSE(std::filesystem::exists(record()));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
