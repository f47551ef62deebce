#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/portable/StandardOutputLog.h"

namespace vantrel::linuxdesktop {
namespace {

struct LogPipe {
    LogPipe() { EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0); }
    ~LogPipe() {
        for (const int end : ends) close(end);
    }
    LogPipe(const LogPipe&) = delete;
    LogPipe& operator=(const LogPipe&) = delete;

    int reading() const { return ends[0]; }
    int writing() const { return ends[1]; }
    // Waits until there is something.
    std::string some() const {
        std::array<char, 65536> buffer;
        const ssize_t count = read(reading(), buffer.data(), buffer.size());
        EXPECT_GT(count, 0);
        return {buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
    }
    std::string lines(std::ptrdiff_t wanted) const {
        std::string text;
        while (std::count(text.begin(), text.end(), '\n') < wanted) text += some();
        return text;
    }
    bool isEmpty() const {
        pollfd state{reading(), POLLIN, 0};
        return poll(&state, 1, 0) == 0;
    }

    std::array<int, 2> ends{};
};

std::string numbered(int from, int to) {
    std::string text;
    for (int i = from; i < to; ++i) text += "riga " + std::to_string(i) + "\n";
    return text;
}

TEST(StandardOutputLog, IsHeldUpByNoReaderThatDoesNotRead) {
    const LogPipe output;
    const LogPipe errors;
    StandardOutputLog log(output.writing(), errors.writing());
    // Far more than a pipe takes.
    constexpr int many = 20000;
    for (int i = 0; i < many; ++i) log.print("riga " + std::to_string(i));
    EXPECT_EQ(output.lines(many), numbered(0, many)) << "in order, once the reader goes on";
    EXPECT_TRUE(errors.isEmpty());
    EXPECT_EQ(fcntl(output.writing(), F_GETFL) & O_NONBLOCK, 0) << "other processes write there too";
}

// What arrives at the terminal's other end until that many lines have. A terminal puts a return before each line break.
std::string linesOf(int terminal, std::ptrdiff_t wanted) {
    std::string text;
    std::array<char, 4096> buffer;
    while (std::count(text.begin(), text.end(), '\n') < wanted) {
        const ssize_t count = read(terminal, buffer.data(), buffer.size());
        if (count <= 0) return text + "(the end)";
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    std::erase(text, '\r');
    return text;
}

TEST(StandardOutputLog, IsHeldUpByNoTerminalThatStops) {
    int other = -1;
    int terminal = -1;
    ASSERT_EQ(openpty(&other, &terminal, nullptr, nullptr, nullptr), 0);
    constexpr int many = 5000;
    for (const bool stopped : {true, false}) {
        StandardOutputLog log(terminal, terminal);
        log.print("prima");
        EXPECT_EQ(linesOf(other, 1), "prima\n");
        // A terminal that is not stopped, and whose window does not read, takes some pieces only in part.
        if (stopped) {
            ASSERT_EQ(tcflow(terminal, TCOOFF), 0);
        }
        for (int i = 0; i < many; ++i) log.print("riga " + std::to_string(i));
        if (stopped) {
            ASSERT_EQ(tcflow(terminal, TCOON), 0);
        }
        EXPECT_EQ(linesOf(other, many), numbered(0, many));
    }
    EXPECT_EQ(fcntl(terminal, F_GETFL) & O_NONBLOCK, 0) << "other processes write there too";
    close(terminal);
    close(other);
}

TEST(StandardOutputLog, WritesALineAtOnceAsLongAsItIsTaken) {
    const LogPipe output;
    const LogPipe errors;
    StandardOutputLog log(output.writing(), errors.writing());
    log.print("prima");
    EXPECT_FALSE(output.isEmpty()) << "a process that is killed now has lost nothing";
    EXPECT_EQ(output.some(), "prima\n");
}

TEST(StandardOutputLog, CountsTheLinesThatItDropsOnStandardError) {
    const LogPipe output;
    const LogPipe errors;
    StandardOutputLog log(output.writing(), errors.writing());
    const std::string line(1023, 'x');
    constexpr std::ptrdiff_t many = 8000;
    for (int i = 0; i < many; ++i) log.print(line);
    std::ptrdiff_t kept = 0;
    // The count comes once everything that was kept is in the pipe.
    while (errors.isEmpty() || !output.isEmpty()) {
        const std::string text = output.isEmpty() ? "" : output.some();
        kept += std::count(text.begin(), text.end(), '\n');
    }
    EXPECT_GT(kept, 1000);
    EXPECT_LT(kept, many);
    EXPECT_EQ(errors.some(),
              "vantrel: " + std::to_string(many - kept) + " log lines were dropped: nobody read standard output\n");
    log.print("dopo");
    EXPECT_EQ(output.some(), "dopo\n");
}

TEST(StandardOutputLog, EndsThoughNobodyReads) {
    const LogPipe output;
    const LogPipe errors;
    const std::string full(70000, 'x');
    {
        StandardOutputLog log(output.writing(), errors.writing());
        log.print(full);
        log.print("non letta");
    }
    EXPECT_EQ(errors.some(), "vantrel: 2 log lines were dropped: nobody read standard output\n");
}

TEST(StandardOutputLog, EndsOnceThoughTwoThreadsEndIt) {
    const LogPipe output;
    const LogPipe errors;
    const auto lines = std::make_shared<UnreadLines>(output.writing(), errors.writing());
    lines->write(std::string(70000, 'x') + "\n");
    std::thread other([&lines] { lines->end(); });
    lines->end();
    other.join();
    EXPECT_EQ(errors.some(), "vantrel: 1 log lines were dropped: nobody read standard output\n");
}

TEST(StandardOutputLog, WaitsAtExitForAReaderThatGoesOn) {
    const LogPipe output;
    constexpr int many = 20000;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // Nobody destroys it, as in a process whose main thread calls exit().
        static StandardOutputLog* const log = std::make_unique<StandardOutputLog>(output.writing()).release();
        for (int i = 0; i < many; ++i) log->print("riga " + std::to_string(i));
        std::exit(0);
    }
    EXPECT_EQ(output.lines(many), numbered(0, many));
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(StandardOutputLog, LeavesAtExitThoughNobodyReads) {
    const LogPipe output;
    const LogPipe errors;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        static StandardOutputLog* const log =
            std::make_unique<StandardOutputLog>(output.writing(), errors.writing()).release();
        log->print(std::string(70000, 'x'));
        std::exit(0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(errors.some(), "vantrel: 1 log lines were dropped: nobody read standard output\n");
}

TEST(StandardOutputLog, WritesWholeLinesFromManyThreadsIntoASlowPipe) {
    std::array<int, 2> pipeEnds{};
    ASSERT_EQ(pipe(pipeEnds.data()), 0);
    // A full pipe then refuses instead of waiting, and accepts lines in pieces.
    fcntl(pipeEnds[1], F_SETFL, O_NONBLOCK);
    StandardOutputLog log(pipeEnds[1]);
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.emplace_back([&log, writer] {
            for (int line = 0; line < 50; ++line) log.print(std::string(9000, static_cast<char>('a' + writer)));
        });
    }
    std::string text;
    std::array<char, 65536> buffer;
    while (std::count(text.begin(), text.end(), '\n') < 200) {
        const ssize_t count = read(pipeEnds[0], buffer.data(), buffer.size());
        ASSERT_GT(count, 0);
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    for (auto& writer : writers) writer.join();
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        ASSERT_EQ(line, std::string(9000, line.empty() ? '?' : line.front()));
    }
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

TEST(StandardOutputLog, LosesItsLinesAndNothingElseWhenTheReaderHasGone) {
    std::array<int, 2> pipeEnds{};
    ASSERT_EQ(pipe(pipeEnds.data()), 0);
    close(pipeEnds[0]);
    StandardOutputLog log(pipeEnds[1]);
    log.print("nobody reads this");
    log.print("nor this");
    close(pipeEnds[1]);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
