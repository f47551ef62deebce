#include <gmock/gmock.h>

#include "app/CommandLineAnswer.h"
#include "session/ClientVersion.h"

namespace vantrel {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(CommandLineAnswer, IsNoneWithoutArguments) {
    EXPECT_FALSE(CommandLineAnswer::to({}));
}

TEST(CommandLineAnswer, HelpsInBothLanguages) {
    for (const char* option : {"--help", "-h"}) {
        const auto answer = CommandLineAnswer::to({option});
        ASSERT_TRUE(answer) << option;
        EXPECT_EQ(answer->status, 0);
        EXPECT_THAT(answer->text, StartsWith("Uso: vantrel [--help | --version]\n"));
        EXPECT_THAT(answer->text, HasSubstr("Usage: vantrel [--help | --version]\n"));
    }
}

TEST(CommandLineAnswer, NamesTheVersionThatTheServerIsTold) {
    const auto answer = CommandLineAnswer::to({"--version"});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 0);
    EXPECT_EQ(answer->text, "Vantrel " + std::string(fixedClientVersion) + "\n");
}

TEST(CommandLineAnswer, RefusesWhatItDoesNotKnow) {
    for (const char* argument : {"--Help", "-v", "--version=1", "", "file", "--"}) {
        const auto answer = CommandLineAnswer::to({argument, "--help"});
        ASSERT_TRUE(answer) << argument;
        EXPECT_EQ(answer->status, 2);
        EXPECT_EQ(answer->text,
                  "vantrel: argomento sconosciuto / unknown argument: " + std::string(argument) + " (--help)\n");
    }
}

}  // namespace
}  // namespace vantrel
