#include <gtest/gtest.h>

#include "practice/state/ParticipantPresence.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice::test {
namespace {

constexpr double joinedAt = 1000;

ReceivedHeartbeat heartbeatAt(double time) {
    return {time, TimeText("2024-05-17T09:41:07Z"), true, true, false};
}

PracticeParticipant participant(const std::vector<double>& heartbeats) {
    PracticeParticipant participant;
    participant.joinedAt = joinedAt;
    for (const double time : heartbeats) participant.lastHeartbeat = heartbeatAt(time);
    return participant;
}

void leave(PracticeParticipant& participant, double time) {
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
    gone.lastHeartbeat = heartbeatAt(1013);
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
    SessionRegistry registry({{"PROVA", "Sicurezza", SessionStatus::active, ""}}, presence);
    HeartbeatBody body;
    body.sessionCode = "PROVA";
    body.timestamp = "2024-05-17T09:41:07Z";
    const auto beat = [&](const std::string& token, double time, bool isNotice) {
        body.userToken = token;
        body.disconnecting = isNotice;
        EXPECT_EQ(registry.heartbeat(body, time), SessionRegistry::Heard::active);
    };
    const std::string stayed = registry.join("PROVA", {}, joinedAt).value_or("");
    const std::string leftAtOnce = registry.join("PROVA", {}, joinedAt).value_or("");
    beat(stayed, 1010, false);
    beat(stayed, 1025, false);
    beat(stayed, 1030, true);
    beat(leftAtOnce, 1001, true);
    const auto participants = registry.participants();
    ASSERT_TRUE(participants[0].lastHeartbeat.has_value());
    EXPECT_EQ(participants[0].lastHeartbeat->receivedAt, 1025);
    EXPECT_FALSE(participants[1].lastHeartbeat.has_value());
    EXPECT_EQ(ParticipantPresence::heardAt(participants[0]), 1030);
    EXPECT_EQ(ParticipantPresence::heardAt(participants[1]), 1001);
}

}  // namespace
}  // namespace vantrel::practice::test
