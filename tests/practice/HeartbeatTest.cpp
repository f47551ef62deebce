#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class Heartbeat : public testing::Test {
  protected:
    PracticeReply send(const nlohmann::json& body) { return server.handle(post("/api/heartbeat", body.dump())); }

    double now = standingTime;
    PracticeServer server{fourSessions(), [this] { return now; }};
    std::string token = joined(server, "PROVA");
};

TEST_F(Heartbeat, IsKeptWithItsFlags) {
    nlohmann::json body = heartbeatBody("PROVA", token);
    body["meetConnected"] = false;
    const PracticeReply reply = send(body);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"sessionEnded", false}}));

    const PracticeParticipant participant = server.participants()[0];
    const auto heartbeats = server.history(participant.number).heartbeats;
    ASSERT_EQ(heartbeats.size(), 1U);
    EXPECT_EQ(heartbeats[0].receivedAt, standingTime);
    EXPECT_EQ(heartbeats[0].timestamp.text(), "2024-05-17T09:41:07Z");
    EXPECT_TRUE(heartbeats[0].lockdownActive);
    EXPECT_FALSE(heartbeats[0].meetConnected);
    EXPECT_FALSE(heartbeats[0].disconnecting);
    EXPECT_FALSE(participant.leftAt.has_value());
}

TEST_F(Heartbeat, TakesTheCodeInAnyCase) {
    EXPECT_EQ(send(heartbeatBody("pRoVa", token)).status, 200);
}

TEST_F(Heartbeat, KeepsViolationsInTheirOrder) {
    nlohmann::json body = heartbeatBody("PROVA", token);
    body["violations"] = {{{"type", "KEY_BLOCKED"}, {"detail", "Cmd+Tab"}, {"at", "2024-05-17T09:41:01Z"}},
                          {{"type", "FOCUS_VIOLATION"}, {"detail", "Però"}, {"at", "2024-05-17T09:41:02Z"}}};
    EXPECT_EQ(send(body).status, 200);
    now += 15;
    body["violations"] = {{{"type", "KEY_BLOCKED"}, {"detail", "Cmd+H"}, {"at", "2024-05-17T09:41:16Z"}}};
    EXPECT_EQ(send(body).status, 200);

    const auto violations = server.history(1).violations;
    ASSERT_EQ(violations.size(), 3U);
    EXPECT_EQ(violations[0].detail, "Cmd+Tab");
    EXPECT_EQ(violations[1].type, "FOCUS_VIOLATION");
    EXPECT_EQ(violations[1].detail, "Però");
    EXPECT_EQ(violations[1].at.text(), "2024-05-17T09:41:02Z");
    EXPECT_EQ(violations[1].receivedAt, standingTime);
    EXPECT_EQ(violations[2].detail, "Cmd+H");
    EXPECT_EQ(violations[2].receivedAt, standingTime + 15);
}

TEST_F(Heartbeat, TellsThatTheSessionHasEnded) {
    EXPECT_TRUE(server.endSession("prova"));
    EXPECT_EQ(parsed(send(heartbeatBody("PROVA", token))), nlohmann::json({{"sessionEnded", true}}));
    EXPECT_EQ(parsed(server.handle(get("/api/sessions/PROVA")))["status"], "ENDED");
    EXPECT_FALSE(server.endSession("ALTRA"));
}

TEST_F(Heartbeat, WithTheDisconnectNoticeLeaves) {
    nlohmann::json notice = heartbeatBody("PROVA", token);
    notice["lockdownActive"] = false;
    notice["meetConnected"] = false;
    notice["disconnecting"] = true;
    now += 30;
    EXPECT_EQ(send(notice).status, 200);
    now += 1;
    EXPECT_EQ(send(heartbeatBody("PROVA", token)).status, 200);

    const PracticeParticipant participant = server.participants()[0];
    EXPECT_EQ(participant.leftAt, standingTime + 30);
    const auto heartbeats = server.history(participant.number).heartbeats;
    ASSERT_EQ(heartbeats.size(), 2U);
    EXPECT_TRUE(heartbeats[0].disconnecting);
}

TEST_F(Heartbeat, RefusesABodyThatLacksAKeyOrHoldsAnother) {
    const nlohmann::json right = heartbeatBody("PROVA", token);
    for (const auto& [key, value] : right.items()) {
        nlohmann::json body = right;
        body.erase(key);
        const PracticeReply reply = send(body);
        EXPECT_EQ(reply.status, 400) << key;
        EXPECT_EQ(parsed(reply)["message"], "the body lacks \"" + key + "\"");
        body[key] = 1;
        EXPECT_EQ(send(body).status, 400) << key;
    }
    nlohmann::json body = right;
    body["reason"] = "userRequest";
    EXPECT_EQ(send(body).status, 400);
    EXPECT_TRUE(server.history(1).heartbeats.empty());
}

TEST_F(Heartbeat, RefusesAViolationOfAnotherShape) {
    const nlohmann::json right{{"type", "KEY_BLOCKED"}, {"detail", ""}, {"at", "2024-05-17T09:41:01Z"}};
    nlohmann::json extra = right;
    extra["code"] = "x";
    nlohmann::json late = right;
    late["at"] = "2024-05-17T09:41:01.250Z";
    nlohmann::json lacking = right;
    lacking.erase("detail");
    for (const nlohmann::json& wrong : {extra, late, lacking, nlohmann::json("KEY_BLOCKED"), nlohmann::json()}) {
        nlohmann::json body = heartbeatBody("PROVA", token);
        body["violations"] = nlohmann::json::array({right, wrong});
        EXPECT_EQ(send(body).status, 400) << wrong;
    }
    EXPECT_TRUE(server.history(1).violations.empty());
}

TEST_F(Heartbeat, RefusesATimeOfAnotherForm) {
    for (const std::string time : {"", "2024-05-17", "2024-05-17T09:41:07", "2024-05-17T09:41:07+00:00"}) {
        nlohmann::json body = heartbeatBody("PROVA", token);
        body["timestamp"] = time;
        EXPECT_EQ(send(body).status, 400) << time;
    }
}

TEST_F(Heartbeat, RefusesAnUnknownToken) {
    const PracticeReply reply = send(heartbeatBody("PROVA", "practice-99"));
    EXPECT_EQ(reply.status, 401);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"error", "unknown_token"}}));
}

TEST_F(Heartbeat, RefusesATokenOfAnotherSession) {
    EXPECT_EQ(send(heartbeatBody("ATTESA", token)).status, 403);
    EXPECT_TRUE(server.history(1).heartbeats.empty());
}

}  // namespace
}  // namespace vantrel::practice::test
