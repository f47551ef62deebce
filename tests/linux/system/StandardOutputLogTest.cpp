#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/portable/StandardOutputLog.h"

namespace vantrel::linuxdesktop {
namespace {

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
