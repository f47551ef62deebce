#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/linux/apps/ProcessTable.h"

namespace vantrel::linuxdesktop {
namespace {

TEST(ProcessTable, FindsThisProcessWithItsExecutableAndArguments) {
    const auto entry = ProcessTable::find(getpid());
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->process, getpid());
    EXPECT_TRUE(entry->executablePath.ends_with("/linux-tests")) << entry->executablePath;
    ASSERT_FALSE(entry->arguments.empty());
    EXPECT_EQ(entry->startTime, ProcessTable::startTime(getpid()));
    const auto all = ProcessTable::all();
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [](const auto& other) { return other.process == getpid(); }));
}

TEST(ProcessTable, KnowsNoProcessThatDoesNotExist) {
    EXPECT_FALSE(ProcessTable::find(0));
    EXPECT_FALSE(ProcessTable::find(-1));
    EXPECT_FALSE(ProcessTable::find(0x7fffffff));
}

TEST(ProcessTable, CountsAZombieAsGone) {
    const pid_t child = fork();
    if (child == 0) _exit(0);
    siginfo_t info{};
    // Waits for its end and leaves it a zombie.
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
    EXPECT_FALSE(ProcessTable::find(child));
    EXPECT_EQ(ProcessTable::startTime(child), std::nullopt);
    waitpid(child, nullptr, 0);
}

TEST(ProcessTable, ReadsTheDisplayThatAProcessWasStartedFor) {
    const pid_t child = fork();
    if (child == 0) {
        setenv("DISPLAY", ":77.0", 1);
        execlp("sleep", "sleep", "30", nullptr);
        _exit(1);
    }
    const std::vector<std::string> sleeping{"sleep", "30"};
    std::optional<ProcessEntry> entry;
    for (int attempt = 0; attempt < 200; ++attempt) {
        entry = ProcessTable::find(child);
        // While the child becomes the other program, a reading may mix both.
        if (entry && entry->display == ":77" && entry->arguments == sleeping) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->display, ":77");
    EXPECT_EQ(entry->arguments, sleeping);
}

TEST(ProcessTable, ReadsEveryWayOfWritingADisplayAsOne) {
    EXPECT_EQ(ProcessTable::displayName(":1"), ":1");
    EXPECT_EQ(ProcessTable::displayName(":1.0"), ":1");
    EXPECT_EQ(ProcessTable::displayName("unix:1.2"), ":1");
    EXPECT_EQ(ProcessTable::displayName("localhost:10.0"), "localhost:10");
    EXPECT_EQ(ProcessTable::displayName("host.example:2.1"), "host.example:2");
    EXPECT_EQ(ProcessTable::displayName(""), "");
    EXPECT_EQ(ProcessTable::displayName("nonsense"), "");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
