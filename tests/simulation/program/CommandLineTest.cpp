#include <gtest/gtest.h>

#include "tests/simulation/program/CommandLine.h"

namespace vantrel::simulation {
namespace {

std::string errorOf(const std::vector<std::string>& arguments) {
    const auto read = readCommandLine(arguments);
    const auto* error = std::get_if<CommandLineError>(&read);
    return error ? error->what : "";
}

TEST(SimulateCommandLine, SaysWhichNumbersArePlayedAndHow) {
    const auto read = readCommandLine({"--seeds", "3..17", "--jobs", "2", "--statistics", "--limit", "0.5"});
    const auto& line = std::get<CommandLine>(read);
    EXPECT_EQ(line.seeds, (CommandLine::Numbers{3, 17}));
    EXPECT_EQ(line.jobs, 2);
    EXPECT_TRUE(line.statistics);
    EXPECT_FALSE(line.twice);
    EXPECT_EQ(line.limit, 0.5);
}

TEST(SimulateCommandLine, TakesASingleNumber) {
    const auto read = readCommandLine({"--seeds", "9"});
    EXPECT_EQ(std::get<CommandLine>(read).seeds, (CommandLine::Numbers{9, 9}));
}

TEST(SimulateCommandLine, IsRefusedWithTheReason) {
    EXPECT_EQ(errorOf({}), "one of --seeds, --show and --judge is needed");
    EXPECT_EQ(errorOf({"--seeds", "1..2", "--show", "1"}), "one of --seeds, --show and --judge is needed");
    EXPECT_EQ(errorOf({"--seeds"}), "--seeds needs a value");
    for (const std::string wrong : {"", "a..b", "1..", "..2", "5..4", "1...2", "-1..2", "1..2x"}) {
        EXPECT_EQ(errorOf({"--seeds", wrong}), "--seeds does not take '" + wrong + "'");
    }
    EXPECT_EQ(errorOf({"--jobs", "0"}), "--jobs does not take '0'");
    EXPECT_EQ(errorOf({"--often"}), "unknown option --often");
}

}  // namespace
}  // namespace vantrel::simulation
