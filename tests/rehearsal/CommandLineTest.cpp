#include <gtest/gtest.h>

#include "rehearsal/program/CommandLine.h"

namespace vantrel::rehearsal {
namespace {

CommandLine line(const std::vector<std::string>& arguments) {
    return std::get<CommandLine>(readCommandLine(arguments));
}

std::string error(const std::vector<std::string>& arguments) {
    return std::get<CommandLineError>(readCommandLine(arguments)).what;
}

TEST(CommandLine, TakesAFileAndNoSeedOfItsOwn) {
    EXPECT_EQ(line({"a.yaml"}).file, "a.yaml");
    EXPECT_EQ(line({"a.yaml"}).seed, std::nullopt);
}

TEST(CommandLine, TakesASeedBeforeAndAfterTheFile) {
    EXPECT_EQ(line({"a.yaml", "--seed", "7"}).seed, 7U);
    EXPECT_EQ(line({"--seed=18446744073709551615", "a.yaml"}).seed, 18446744073709551615U);
}

TEST(CommandLine, PrintsThePreludeLineByLineWhenAsked) {
    EXPECT_FALSE(line({"a.yaml"}).whole);
    EXPECT_TRUE(line({"a.yaml", "--whole"}).whole);
}

TEST(CommandLine, TakesAFileWithADashAfterTwoDashes) {
    EXPECT_EQ(line({"--", "-a.yaml"}).file, "-a.yaml");
}

TEST(CommandLine, NeedsNoFileForHelp) {
    EXPECT_TRUE(line({"--help"}).help);
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(error({}), "no file is given");
    EXPECT_EQ(error({"a.yaml", "--sed", "7"}), "unknown option --sed");
    EXPECT_EQ(error({"a.yaml", "b.yaml"}), "one file at a time: a.yaml or b.yaml");
    EXPECT_EQ(error({"a.yaml", "--seed"}), "--seed needs a number");
    EXPECT_EQ(error({"a.yaml", "--seed", "-1"}), "--seed needs a whole number, not '-1'");
    EXPECT_EQ(error({"a.yaml", "--seed="}), "--seed needs a whole number, not ''");
    EXPECT_EQ(error({"a.yaml", "--seed", "1.5"}), "--seed needs a whole number, not '1.5'");
    EXPECT_EQ(error({"a.yaml", "--seed", "18446744073709551616"}),
              "--seed needs a whole number, not '18446744073709551616'");
}

}  // namespace
}  // namespace vantrel::rehearsal
