#include <gtest/gtest.h>

#include "practice/state/ParticipantPresence.h"

namespace vantrel::practice::test {
namespace {

constexpr double joinedAt = 1000;

PracticeParticipant participant(const std::vector<double>& heartbeats) {
    PracticeParticipant participant;
    participant.joinedAt = joinedAt;
    for (const double time : heartbeats) participant.heartbeats.push_back({time, "", true, true, false});
    return participant;
}

void leave(PracticeParticipant& participant, double time) {
    participant.heartbeats.push_back({time, "", false, false, true});
    participant.leftAt = time;
}

const ParticipantPresence presence(40);

TEST(Presence, CountsFromTheJoinUntilTheFirstHeartbeat) {
    EXPECT_EQ(presence.of(participant({}), joinedAt), Presence::in);
    EXPECT_EQ(presence.of(participant({}), joinedAt + 40), Presence::in);
    EXPECT_EQ(presence.of(participant({}), joinedAt + 40.001), Presence::lost);
}

TEST(Presence, CountsFromTheLastHeartbeatAfterwards) {
    EXPECT_EQ(presence.of(participant({1010, 1025}), 1065), Presence::in);
    EXPECT_EQ(presence.of(participant({1010, 1025}), 1065.001), Presence::lost);
}

TEST(Presence, IsInAgainWithTheNextHeartbeat) {
    EXPECT_EQ(presence.of(participant({1010}), 1100), Presence::lost);
    EXPECT_EQ(presence.of(participant({1010, 1100}), 1100), Presence::in);
}

TEST(Presence, IsLeftForGoodSinceTheNotice) {
    PracticeParticipant gone = participant({1010});
    leave(gone, 1012);
    EXPECT_EQ(presence.of(gone, 1012), Presence::left);
    EXPECT_EQ(presence.of(gone, 9000), Presence::left);
    gone.heartbeats.push_back({1013, "", true, true, false});
    EXPECT_EQ(presence.of(gone, 1013), Presence::left);
}

TEST(Presence, IsLeftByANoticeEvenAfterTheContactWasLost) {
    PracticeParticipant gone = participant({1010});
    EXPECT_EQ(presence.of(gone, 2000), Presence::lost);
    leave(gone, 2001);
    EXPECT_EQ(presence.of(gone, 2001), Presence::left);
}

TEST(Presence, StaysInWhenTheClockIsPutBack) {
    EXPECT_EQ(presence.of(participant({1010}), 5), Presence::in);
}

TEST(Presence, UsesTheSecondsItWasGiven) {
    EXPECT_EQ(ParticipantPresence(2).of(participant({}), joinedAt + 2), Presence::in);
    EXPECT_EQ(ParticipantPresence(2).of(participant({}), joinedAt + 2.5), Presence::lost);
}

TEST(Presence, TakesTheNoticeForNoHeartbeat) {
    EXPECT_EQ(ParticipantPresence::lastHeartbeat(participant({})), nullptr);
    PracticeParticipant gone = participant({1010, 1025});
    leave(gone, 1030);
    ASSERT_NE(ParticipantPresence::lastHeartbeat(gone), nullptr);
    EXPECT_EQ(ParticipantPresence::lastHeartbeat(gone)->receivedAt, 1025);
    PracticeParticipant atOnce = participant({});
    leave(atOnce, 1001);
    EXPECT_EQ(ParticipantPresence::lastHeartbeat(atOnce), nullptr);
}

}  // namespace
}  // namespace vantrel::practice::test
