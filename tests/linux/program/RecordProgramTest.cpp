#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

// The recorder as a program of its own.
class RecordProgram : public DesktopTest {
  protected:
    void TearDown() override {
        if (recorder > 0) kill(recorder, SIGKILL);
        DesktopTest::TearDown();
    }

    void start() {
        std::string display = std::string("DISPLAY=") + getenv("DISPLAY");
        std::string home = "HOME=" + folder.path().string();
        std::array<char*, 3> environment{display.data(), home.data(), nullptr};
        std::string program = VANTREL_RECORD;
        std::string file = recording.string();
        std::array<char*, 3> arguments{program.data(), file.data(), nullptr};
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, said.c_str(), O_WRONLY | O_CREAT, 0600);
        ASSERT_EQ(posix_spawn(&recorder, program.c_str(), &actions, nullptr, arguments.data(), environment.data()), 0);
        posix_spawn_file_actions_destroy(&actions);
    }

    int interrupt() {
        kill(recorder, SIGINT);
        int status = -1;
        EXPECT_EQ(waitpid(recorder, &status, 0), recorder);
        recorder = -1;
        return status;
    }

    std::vector<std::string> lines() const {
        std::istringstream text(contentsOf(recording));
        std::vector<std::string> found;
        for (std::string line; std::getline(text, line);) found.push_back(line);
        return found;
    }

    const std::filesystem::path recording = folder.path() / "recording";
    const std::filesystem::path said = folder.path() / "said";
    pid_t recorder = -1;
};

TEST_F(RecordProgram, WritesWholeLinesUntilControlC) {
    start();
    ASSERT_TRUE(waitUntil([this] { return std::filesystem::exists(recording) && lines().size() >= 4; }));
    const auto clients = computer->runningApplications.withBundleIdentifier(computer->mainBundle.identifier().value());
    EXPECT_TRUE(std::none_of(clients.begin(), clients.end(), [this](const auto& client) {
        return client->processIdentifier() == recorder;
    })) << "it does not count as a client";
    EXPECT_EQ(interrupt(), 0);
    EXPECT_NE(contentsOf(said).find("writes to " + recording.string()), std::string::npos) << contentsOf(said);
    EXPECT_TRUE(contentsOf(recording).ends_with("\n"));
    double number = 0;
    double uptime = -1;
    for (const std::string& line : lines()) {
        const auto look = computer->json.parse(line);
        ASSERT_TRUE(look && look->object()) << line;
        const JSONObject& object = *look->object();
        EXPECT_EQ(object.at("line"), ++number);
        EXPECT_EQ(object.at("screens").array()->size(), computer->screens.screens().size());
        EXPECT_NE(object.at("windows").array(), nullptr) << line;
        const double seen = std::get<double>(object.at("uptime").value);
        EXPECT_GT(seen, uptime);
        uptime = seen;
    }
}

TEST_F(RecordProgram, WritesOverNoFile) {
    writeContents(recording, "kept");
    start();
    int status = -1;
    ASSERT_EQ(waitpid(recorder, &status, 0), recorder);
    recorder = -1;
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_EQ(contentsOf(recording), "kept");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
