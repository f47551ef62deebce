#include <gmock/gmock.h>

#include "platform/linux/system/CommandLineAnswer.h"

namespace vantrel::linuxdesktop {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(CommandLineAnswer, IsNoneWithoutArguments) {
    EXPECT_FALSE(CommandLineAnswer::to({}, "3.1"));
}

TEST(CommandLineAnswer, HelpsInBothLanguages) {
    for (const char* option : {"--help", "-h"}) {
        const auto answer = CommandLineAnswer::to({option}, "3.1");
        ASSERT_TRUE(answer) << option;
        EXPECT_EQ(answer->status, 0);
        EXPECT_THAT(answer->text, StartsWith("Uso: vantrel [--help | --version]\n"));
        EXPECT_THAT(answer->text, HasSubstr("Usage: vantrel [--help | --version]\n"));
    }
}

TEST(CommandLineAnswer, NamesTheVersion) {
    const auto answer = CommandLineAnswer::to({"--version"}, "3.1");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 0);
    EXPECT_EQ(answer->text, "Vantrel 3.1\n");
}

TEST(CommandLineAnswer, RefusesWhatItDoesNotKnow) {
    for (const char* argument : {"--Help", "-v", "--version=1", "", "file", "--"}) {
        const auto answer = CommandLineAnswer::to({argument, "--help"}, "3.1");
        ASSERT_TRUE(answer) << argument;
        EXPECT_EQ(answer->status, 2);
        EXPECT_EQ(answer->text,
                  "vantrel: argomento sconosciuto / unknown argument: " + std::string(argument) + " (--help)\n");
    }
}

}  // namespace
}  // namespace vantrel::linuxdesktop
