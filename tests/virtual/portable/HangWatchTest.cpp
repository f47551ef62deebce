#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <optional>
#include <thread>

#include "platform/portable/HangWatch.h"

namespace vantrel {
namespace {

using std::chrono::milliseconds;

/// A client that only waits, and a thread that watches it.
class HangWatchTest : public testing::Test {
  protected:
    static constexpr int patience = 60;

    void SetUp() override {
        client_ = fork();
        if (client_ == 0) {
            for (;;) pause();
        }
        ASSERT_GT(client_, 0);
        ASSERT_EQ(0, pipe(line_.data()));
        watch_.emplace([this, line = line_[0]] { watchClient(line, client_, patience); });
    }

    void TearDown() override {
        hangUp();
        endWatch();
        close(line_[0]);
        if (isReaped_) return;
        kill(client_, SIGKILL);
        waitpid(client_, nullptr, 0);
    }

    void say(char what) { ASSERT_EQ(1, write(line_[1], &what, 1)); }
    void hangUp() {
        if (line_[1] >= 0) close(line_[1]);
        line_[1] = -1;
    }

    void endWatch() {
        if (watch_ && watch_->joinable()) watch_->join();
    }

    /// The signal that has ended the client. Waits for its end.
    int endedBy() {
        int status = 0;
        isReaped_ = waitpid(client_, &status, 0) == client_;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
    bool isRunning() const { return waitpid(client_, nullptr, WNOHANG) == 0; }

  private:
    std::array<int, 2> line_{-1, -1};
    pid_t client_ = 0;
    bool isReaped_ = false;
    std::optional<std::thread> watch_;
};

TEST_F(HangWatchTest, AClientThatHasAnsweredAndFallsSilentIsEndedAfterTwiceThePatience) {
    const auto begin = std::chrono::steady_clock::now();
    say(watchedAnswer);
    EXPECT_EQ(SIGKILL, endedBy());
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(2 * patience));
}

TEST_F(HangWatchTest, StandardErrorThatNobodyReadsDoesNotKeepTheWatch) {
    const int before = dup(STDERR_FILENO);
    std::array<int, 2> full{-1, -1};
    ASSERT_EQ(0, pipe(full.data()));
    fcntl(full[1], F_SETFL, O_NONBLOCK);
    while (write(full[1], "full", 4) > 0) {
    }
    fcntl(full[1], F_SETFL, 0);
    dup2(full[1], STDERR_FILENO);
    say(watchedAnswer);
    EXPECT_EQ(SIGKILL, endedBy());
    endWatch();
    dup2(before, STDERR_FILENO);
    for (const int line : {before, full[0], full[1]}) close(line);
}

TEST_F(HangWatchTest, NothingIsExpectedOfAClientThatHasNeverAnswered) {
    std::this_thread::sleep_for(milliseconds(5 * patience));
    EXPECT_TRUE(isRunning());
}

TEST_F(HangWatchTest, NothingIsExpectedOfAClientThatRests) {
    say(watchedAnswer);
    say(watchedRest);
    std::this_thread::sleep_for(milliseconds(5 * patience));
    EXPECT_TRUE(isRunning());
    say(watchedAnswer);
    EXPECT_EQ(SIGKILL, endedBy());
}

TEST_F(HangWatchTest, TheWatchGoesWithTheClient) {
    say(watchedAnswer);
    say(watchedRest);
    hangUp();
    std::this_thread::sleep_for(milliseconds(5 * patience));
    EXPECT_TRUE(isRunning());
}

}  // namespace
}  // namespace vantrel
