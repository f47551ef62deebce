#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class Control : public testing::Test {
  protected:
    nlohmann::json received() { return parsed(server.handle(get("/control/received"))); }

    PracticeServer server{fourSessions(), [] { return standingTime; }};
};

TEST_F(Control, ListsWhatWasReceivedInItsOrder) {
    server.handle(get("/api/sessions/PROVA?x=1"));
    server.handle(post("/api/heartbeat", "però"));
    const nlohmann::json list = received();
    ASSERT_EQ(list.size(), 2U);
    const auto headers = nlohmann::json::array({nlohmann::json::array({"Host", "127.0.0.1:8787"})});
    EXPECT_EQ(list[0], nlohmann::json({{"number", 1},
                                       {"time", standingTime},
                                       {"method", "GET"},
                                       {"path", "/api/sessions/PROVA?x=1"},
                                       {"headers", headers},
                                       {"body", ""},
                                       {"status", 200},
                                       {"changed", false},
                                       {"delivered", true}}));
    EXPECT_EQ(list[1]["number"], 2);
    EXPECT_EQ(list[1]["method"], "POST");
    EXPECT_EQ(list[1]["body"], "però");
    EXPECT_EQ(list[1]["status"], 400);
}

TEST_F(Control, GivesABodyThatIsNotUtf8InBase64) {
    server.handle(post("/api/heartbeat", std::string("\0\xFF\xFE", 3)));
    EXPECT_EQ(received()[0]["bodyBase64"], "AP/+");
    EXPECT_FALSE(received()[0].contains("body"));
}

TEST_F(Control, IsNeitherRecordedNorBent) {
    server.handle(post("/control/reply-rule", R"({"path":"*","status":500})"));
    EXPECT_EQ(server.handle(get("/control/state")).status, 200);
    EXPECT_EQ(server.handle(get("/control/unknown")).status, 404);
    EXPECT_EQ(received(), nlohmann::json::array());
}

TEST_F(Control, CountsADelayedReplyAsDeliveredOnlyOnceToldSo) {
    server.handle(post("/control/reply-rule", R"({"path":"/api/*","delaySeconds":1})"));
    const PracticeReply reply = server.handle(get("/api/sessions/PROVA"));
    EXPECT_EQ(received()[0]["delivered"], false);
    EXPECT_EQ(received()[0]["changed"], true);
    server.noteDelivery(reply.exchange, true);
    EXPECT_EQ(received()[0]["delivered"], true);
}

TEST_F(Control, CountsADroppedOrStalledReplyAsNotDelivered) {
    server.handle(post("/control/reply-rule", R"({"path":"/api/*","dropConnection":true,"times":1})"));
    server.handle(post("/control/reply-rule", R"({"path":"/api/*","stallAfterHeaders":true})"));
    server.handle(get("/api/sessions/PROVA"));
    server.handle(get("/api/sessions/PROVA"));
    EXPECT_EQ(received()[0]["delivered"], false);
    EXPECT_EQ(received()[0]["status"], 0);
    EXPECT_EQ(received()[1]["delivered"], false);
    EXPECT_EQ(received()[1]["status"], 200);
}

TEST_F(Control, EndsASession) {
    const std::string token = joined(server, "PROVA");
    const PracticeReply reply = server.handle(post("/control/end/prova", ""));
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"code", "PROVA"}, {"status", "ENDED"}}));
    EXPECT_EQ(parsed(server.handle(post("/api/heartbeat", heartbeatBody("prova", token).dump()))),
              nlohmann::json({{"sessionEnded", true}}));
    EXPECT_EQ(server.handle(post("/control/end/ALTRA", "")).status, 404);
}

TEST_F(Control, ShowsSessionsParticipantsAndRules) {
    const std::string token = joined(server, "PROVA");
    nlohmann::json body = heartbeatBody("prova", token);
    body["violations"] = {{{"type", "KEY_BLOCKED"}, {"detail", "Cmd+Tab"}, {"at", "2024-05-17T09:41:01Z"}}};
    server.handle(post("/api/heartbeat", body.dump()));
    server.handle(post("/control/reply-rule", R"({"path":"/meet/*","times":3})"));
    server.handle(get("/meet/PROVA"));

    const nlohmann::json state = parsed(server.handle(get("/control/state")));
    ASSERT_EQ(state["sessions"].size(), 4U);
    const nlohmann::json heartbeat{{"receivedAt", standingTime},
                                   {"timestamp", "2024-05-17T09:41:07Z"},
                                   {"lockdownActive", true},
                                   {"meetConnected", true},
                                   {"disconnecting", false}};
    const nlohmann::json violation{
        {"receivedAt", standingTime}, {"type", "KEY_BLOCKED"}, {"detail", "Cmd+Tab"}, {"at", "2024-05-17T09:41:01Z"}};
    const nlohmann::json participant{{"userToken", "practice-1"},
                                     {"fullName", "Anna Però"},
                                     {"email", "anna@example.org"},
                                     {"platform", "darwin"},
                                     {"clientVersion", "2.0-macOS"},
                                     {"joinedAt", standingTime},
                                     {"leftAt", nullptr},
                                     {"heartbeatCount", 1},
                                     {"heartbeats", nlohmann::json::array({heartbeat})},
                                     {"violationCount", 1},
                                     {"violations", nlohmann::json::array({violation})}};
    EXPECT_EQ(state["sessions"][0], nlohmann::json({{"code", "PROVA"},
                                                    {"title", "Sicurezza"},
                                                    {"status", "ACTIVE"},
                                                    {"participants", nlohmann::json::array({participant})}}));
    EXPECT_EQ(state["sessions"][2]["status"], "ENDED");
    EXPECT_EQ(state["sessions"][2]["participants"], nlohmann::json::array());
    const nlohmann::json rule{{"rule", 1}, {"method", "*"}, {"path", "/meet/*"}, {"used", 1}, {"times", 3}};
    EXPECT_EQ(state["replyRules"], nlohmann::json::array({rule}));
    EXPECT_EQ(parsed(server.handle(get("/control/participants/" + token))), participant);
    EXPECT_EQ(server.handle(get("/control/participants/practice-2")).status, 404);
    EXPECT_EQ(server.handle(post("/control/participants/" + token, "")).status, 405);
}

TEST_F(Control, ResetPutsEverythingBackToTheStart) {
    const std::string token = joined(server, "PROVA");
    server.endSession("PROVA");
    server.handle(post("/control/reply-rule", R"({"path":"/api/*","status":500})"));
    EXPECT_EQ(server.handle(post("/control/reset", "")).status, 200);
    EXPECT_EQ(received(), nlohmann::json::array());
    EXPECT_TRUE(server.participants().empty());
    EXPECT_EQ(parsed(server.handle(get("/api/sessions/PROVA")))["status"], "ACTIVE");
    EXPECT_EQ(server.handle(post("/api/heartbeat", heartbeatBody("PROVA", token).dump())).status, 401);
}

TEST_F(Control, ResetsOnlyWhatIsNamed) {
    joined(server, "PROVA");
    server.handle(post("/control/reply-rule", R"({"path":"/api/*","status":500})"));
    EXPECT_EQ(server.handle(post("/control/reset", R"({"only":["replyRules"]})")).status, 200);
    EXPECT_EQ(server.handle(get("/api/sessions/PROVA")).status, 200);
    EXPECT_EQ(received().size(), 2U);
    EXPECT_EQ(server.handle(post("/control/reset", R"({"only":["received"]})")).status, 200);
    EXPECT_EQ(received().size(), 0U);
    EXPECT_EQ(server.participants().size(), 1U);
    for (const std::string wrong :
         {"[]", "{}", R"({"only":"replyRules"})", R"({"only":["all"]})", R"({"only":[],"x":1})"}) {
        EXPECT_EQ(server.handle(post("/control/reset", wrong)).status, 400) << wrong;
    }
    EXPECT_EQ(server.participants().size(), 1U);
}

TEST_F(Control, IgnoresWhatBecameOfAnExchangeFromBeforeAReset) {
    const PracticeReply old = server.handle(get("/api/sessions/PROVA"));
    server.reset();
    server.handle(get("/api/sessions/PROVA"));
    server.noteDelivery(old.exchange, false);
    server.noteDelivery(99, false);
    server.noteDelivery(0, false);
    EXPECT_EQ(received()[0]["delivered"], true);
    EXPECT_EQ(received()[0]["number"], 2);
}

}  // namespace
}  // namespace vantrel::practice::test
