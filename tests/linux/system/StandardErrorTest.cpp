#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/portable/StandardError.h"
#include "tests/linux/support/StoppedTerminal.h"

namespace vantrel::linuxdesktop {
namespace {

// Whether a process that has this for its standard error does not come to its end.
bool holdsUp(int descriptor, const std::function<void()>& work) {
    constexpr unsigned patience = 20;
    const pid_t child = fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
        alarm(patience);
        dup2(descriptor, STDERR_FILENO);
        work();
        _exit(0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status != 0;
}

void sayManyLines() {
    for (int i = 0; i < 5000; ++i) sayOnStandardError("vantrel: riga " + std::to_string(i) + "\n");
}

TEST(StandardError, IsHeldUpByNoTerminalThatIsStoppedOrThatNobodyReads) {
    const StoppedTerminal terminal;
    EXPECT_FALSE(holdsUp(terminal.get(), sayManyLines));
    terminal.goOn();
    EXPECT_FALSE(holdsUp(terminal.get(), sayManyLines));
}

// Another writer, such as the browser, may take the last room between a look for it and the write.
TEST(StandardError, IsHeldUpByNoPipeThatSeveralFill) {
    constexpr int rounds = 300;
    constexpr int writers = 4;
    EXPECT_FALSE(holdsUp(STDERR_FILENO, [] {
        for (int round = 0; round < rounds; ++round) {
            std::array<int, 2> ends{};
            if (pipe2(ends.data(), O_CLOEXEC) != 0) _exit(1);
            dup2(ends[1], STDERR_FILENO);
            std::vector<std::thread> threads;
            threads.reserve(writers);
            for (int writer = 0; writer < writers; ++writer) {
                threads.emplace_back([] {
                    const std::string line(3000, 'x');
                    for (int i = 0; i < 40; ++i) sayOnStandardError(line);
                });
            }
            for (std::thread& thread : threads) thread.join();
            for (const int end : ends) close(end);
        }
    }));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
