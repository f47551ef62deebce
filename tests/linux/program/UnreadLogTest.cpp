#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <string>

#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {
namespace {

// The client, with an output that is full before it says anything.
class UnreadLog : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        ASSERT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
        ASSERT_EQ(pipe2(errors.data(), O_CLOEXEC), 0);
        const std::string filling(4096, 'x');
        for (pollfd state{output[1], POLLOUT, 0}; poll(&state, 1, 0) > 0;) {
            ASSERT_GT(write(output[1], filling.data(), filling.size()), 0);
        }
        client = start();
        server = X11Connection::open();
        ASSERT_TRUE(waitUntil([this] { return !X11Windows(*server).ofProcess(client).empty(); }));
    }

    void TearDown() override {
        if (client > 0) kill(client, SIGKILL);
        for (const int end : {output[0], output[1], errors[0], errors[1]}) close(end);
        DesktopTest::TearDown();
    }

    pid_t start() const {
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
        std::string settings = "XDG_CONFIG_HOME=" + home.path().string();
        std::string display = std::string("DISPLAY=") + getenv("DISPLAY");
        std::string folder = "HOME=" + home.path().string();
        std::array<char*, 4> environment{settings.data(), display.data(), folder.data(), nullptr};
        std::string program = VANTREL_PROGRAM;
        std::array<char*, 2> arguments{program.data(), nullptr};
        pid_t process = -1;
        EXPECT_EQ(posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environment.data()), 0);
        posix_spawn_file_actions_destroy(&actions);
        return process;
    }

    TemporaryFolder home;
    std::array<int, 2> output{-1, -1};
    std::array<int, 2> errors{-1, -1};
    pid_t client = -1;
    std::unique_ptr<X11Connection> server;
};

TEST_F(UnreadLog, LetsTheClientStartAndEndAndIsCounted) {
    kill(client, SIGTERM);
    int status = -1;
    ASSERT_EQ(waitpid(client, &status, 0), client);
    client = -1;
    EXPECT_EQ(status, 0);
    std::array<char, 4096> buffer{};
    const ssize_t count = read(errors[0], buffer.data(), buffer.size());
    ASSERT_GT(count, 0);
    const std::string said(buffer.data(), static_cast<std::size_t>(count));
    EXPECT_NE(said.find(" log lines were dropped: nobody read standard output\n"), std::string::npos) << said;
}

}  // namespace
}  // namespace vantrel::linuxdesktop
