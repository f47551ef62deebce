#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/StoppedTerminal.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

// The client with standard output and standard error of the test's.
class ProgramOutput : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        ASSERT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
        ASSERT_EQ(pipe2(errors.data(), O_CLOEXEC), 0);
        server = X11Connection::open();
    }

    void TearDown() override {
        if (client > 0) kill(client, SIGKILL);
        for (const int end : {output[0], output[1], errors[0], errors[1]}) close(end);
        DesktopTest::TearDown();
    }

    // Through a shell that runs the preparation first. Waits for the client's window.
    void start(const std::string& preparation, int standardOutput) { start(preparation, standardOutput, errors[1]); }
    void start(const std::string& preparation, int standardOutput, int standardError) {
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, standardOutput, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, standardError, STDERR_FILENO);
        std::string settings = "XDG_CONFIG_HOME=" + home.path().string();
        std::string display = std::string("DISPLAY=") + getenv("DISPLAY");
        std::string folder = "HOME=" + home.path().string();
        std::array<char*, 4> environment{settings.data(), display.data(), folder.data(), nullptr};
        std::string shell = "/bin/sh";
        std::string option = "-c";
        std::string script = preparation + "exec \"$0\"";
        std::string program = VANTREL_PROGRAM;
        std::array<char*, 5> arguments{shell.data(), option.data(), script.data(), program.data(), nullptr};
        ASSERT_EQ(posix_spawn(&client, shell.c_str(), &actions, nullptr, arguments.data(), environment.data()), 0);
        posix_spawn_file_actions_destroy(&actions);
        ASSERT_TRUE(waitUntil([this] { return !X11Windows(*server).ofProcess(client).empty(); }));
    }

    // As by a log-out. Returns the exit status.
    int end() {
        kill(client, SIGTERM);
        int status = -1;
        EXPECT_EQ(waitpid(client, &status, 0), client);
        client = -1;
        return status;
    }

    std::string standardError() const {
        std::array<char, 4096> buffer{};
        pollfd state{errors[0], POLLIN, 0};
        if (poll(&state, 1, 0) <= 0) return "";
        const ssize_t count = read(errors[0], buffer.data(), buffer.size());
        return {buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
    }

    TemporaryFolder home;
    std::array<int, 2> output{-1, -1};
    std::array<int, 2> errors{-1, -1};
    pid_t client = -1;
    std::unique_ptr<X11Connection> server;
};

TEST_F(ProgramOutput, ThatNobodyReadsLetsTheClientStartAndEndAndIsCounted) {
    const std::string filling(4096, 'x');
    for (pollfd state{output[1], POLLOUT, 0}; poll(&state, 1, 0) > 0;) {
        ASSERT_GT(write(output[1], filling.data(), filling.size()), 0);
    }
    start("", output[1]);
    EXPECT_EQ(end(), 0);
    const std::string said = standardError();
    EXPECT_NE(said.find(" log lines were dropped: nobody read standard output\n"), std::string::npos) << said;
}

TEST_F(ProgramOutput, OnATerminalThatIsStoppedLetsTheClientComplainStartAndEnd) {
    std::filesystem::create_directories(home.path() / "vantrel");
    writeContents(home.path() / "vantrel/defaults.json", "damaged");
    const StoppedTerminal terminal;
    start("", terminal.get(), terminal.get());
    EXPECT_EQ(end(), 0);
}

TEST_F(ProgramOutput, ThatMayNotGrowDoesNotKillTheClient) {
    const auto file = home.path() / "log";
    const FileDescriptor log(open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    start("ulimit -f 0; ", log.get());
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(std::filesystem::file_size(file), 0U);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
