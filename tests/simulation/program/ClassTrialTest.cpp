#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/simulation/program/ClassTrial.h"

namespace vantrel::simulation {
namespace {

constexpr const char* quiet = "title: Nothing\ntimeline: []\nuntil: 1\n";
constexpr const char* ended = "    1.000  end          the client is running\n";

Players playing(const std::string& transcript) {
    Players players;
    players.play = [transcript](const rehearsal::Scenario&) { return transcript; };
    return players;
}

bool breaks(const TrialResult& result, const std::string& rule) {
    return std::any_of(result.broken.begin(), result.broken.end(),
                       [&](const BrokenRule& broken) { return broken.rule == rule; });
}

TEST(ClassTrial, SeesAScenarioThatCannotBeRead) {
    EXPECT_TRUE(breaks(tryClass("title: 7\n", playing(ended), false), "A class is a scenario"));
}

TEST(ClassTrial, SeesATranscriptWithoutAnEnd) {
    constexpr const char* rule = "A transcript tells how the run ended";
    EXPECT_TRUE(breaks(tryClass(quiet, playing(""), false), rule));
    EXPECT_FALSE(breaks(tryClass(quiet, playing(ended), false), rule));
}

TEST(ClassTrial, SeesMisuse) {
    const auto result =
        tryClass(quiet, playing(ended + std::string("    0.500  misuse       a wait with a lock held\n")), false);
    EXPECT_TRUE(breaks(result, "The client does not misuse its platform"));
}

TEST(ClassTrial, SeesAnotherTranscriptTheSecondTime) {
    auto players = playing(ended);
    players.play = [ended = std::string(ended), count = std::make_shared<int>()](const rehearsal::Scenario&) {
        return ++*count > 1 ? "    0.500  log          x\n" + ended : ended;
    };
    EXPECT_TRUE(breaks(tryClass(quiet, players, true), "The same class gives the same transcript"));
}

TEST(ClassTrial, SeesAnotherTranscriptTheOtherWay) {
    auto players = playing(ended);
    constexpr const char* rule = "Both ways give the same transcript";
    players.playOtherwise = players.play;
    EXPECT_FALSE(breaks(tryClass(quiet, players, false), rule));
    players.playOtherwise = playing(std::string(ended) + "    2.000  log          x\n").play;
    EXPECT_TRUE(breaks(tryClass(quiet, players, false), rule));
}

TEST(ClassTrial, DoesNotCompareHowManyBlocksArePending) {
    constexpr const char* rule = "Both ways give the same transcript";
    const std::string end = std::string(ended) + "                        | left: windows 1";
    for (const std::string more : {"", ", requests 2"}) {
        auto players = playing(end + ", pending blocks 1" + more + "\n");
        players.playOtherwise = playing(end + ", pending blocks 13" + more + "\n").play;
        EXPECT_FALSE(breaks(tryClass(quiet, players, false), rule)) << more;
        players.playOtherwise = playing(end + more + "\n").play;
        EXPECT_FALSE(breaks(tryClass(quiet, players, false), rule)) << more;
    }
    auto players = playing(end + "\n");
    players.playOtherwise = playing(end + ", timers 1\n").play;
    EXPECT_TRUE(breaks(tryClass(quiet, players, false), rule));
}

TEST(ClassTrial, SeesWhatIsWrongAfterwards) {
    auto players = playing(ended);
    players.inspect = [] { return std::vector<BrokenRule>{{"Nothing is left", 0, "+1 NSTimer"}}; };
    EXPECT_TRUE(breaks(tryClass(quiet, players, false), "Nothing is left"));
}

}  // namespace
}  // namespace vantrel::simulation
