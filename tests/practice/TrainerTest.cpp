#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class Trainer : public testing::Test {
  protected:
    nlohmann::json state() { return parsed(server.handle(get("/trainer/state"))); }
    nlohmann::json session(std::size_t index = 0) { return state()["sessions"][index]; }

    PracticeReply beat(const std::string& token, const nlohmann::json& changes = nlohmann::json::object()) {
        nlohmann::json body = heartbeatBody("prova", token);
        body.update(changes);
        return server.handle(post("/api/heartbeat", body.dump()));
    }

    static nlohmann::json violation(const std::string& detail) {
        return {{"type", "KEY_BLOCKED"}, {"detail", detail}, {"at", "2024-05-17T09:41:01Z"}};
    }

    static std::vector<std::string> details(const nlohmann::json& violations) {
        std::vector<std::string> texts;
        for (const nlohmann::json& entry : violations) texts.push_back(entry["detail"]);
        return texts;
    }

    double now = standingTime;
    PracticeServer server{fourSessions(), [this] { return now; }};
};

TEST_F(Trainer, SeesEverySessionAndThatNobodyIsIn) {
    const nlohmann::json all = state();
    EXPECT_EQ(all["now"], standingTime);
    ASSERT_EQ(all["sessions"].size(), 4U);
    const auto none = nlohmann::json::array();
    EXPECT_EQ(all["sessions"][0], nlohmann::json({{"code", "PROVA"},
                                                  {"title", "Sicurezza"},
                                                  {"status", "ACTIVE"},
                                                  {"participants", none},
                                                  {"violationCount", 0},
                                                  {"violations", none}}));
    EXPECT_EQ(all["sessions"][1]["status"], "WAITING");
    EXPECT_EQ(all["sessions"][2]["status"], "ENDED");
}

TEST_F(Trainer, SeesWhoIsInWithTheLastHeartbeatAndTheViolations) {
    joined(server, "ATTESA");
    const std::string token = joined(server, "PROVA");
    nlohmann::json expected{{"number", 2},
                            {"fullName", "Anna Però"},
                            {"email", "anna@example.org"},
                            {"clientVersion", "2.0-macOS"},
                            {"joinedAt", standingTime},
                            {"presence", "in"},
                            {"leftAt", nullptr},
                            {"lastHeartbeat", nullptr},
                            {"violationCount", 0}};
    EXPECT_EQ(session()["participants"], nlohmann::json::array({expected}));

    now += 5;
    beat(token, {{"meetConnected", false}, {"violations", nlohmann::json::array({violation("Cmd+Tab")})}});
    expected["lastHeartbeat"] = {{"receivedAt", standingTime + 5}, {"lockdownActive", true}, {"meetConnected", false}};
    expected["violationCount"] = 1;
    EXPECT_EQ(session()["participants"], nlohmann::json::array({expected}));
    EXPECT_EQ(session()["violationCount"], 1);
    const nlohmann::json reported{{"participant", 2},    {"fullName", "Anna Però"}, {"type", "KEY_BLOCKED"},
                                  {"detail", "Cmd+Tab"}, {"receivedAt", now},       {"at", "2024-05-17T09:41:01Z"}};
    EXPECT_EQ(session()["violations"], nlohmann::json::array({reported}));
    EXPECT_EQ(session(1)["violations"], nlohmann::json::array());
}

TEST_F(Trainer, SeesAParticipantAsLostFortySecondsAfterTheLastHeartbeatAndInAgainWithTheNext) {
    const std::string token = joined(server, "PROVA");
    beat(token);
    now += 40;
    EXPECT_EQ(session()["participants"][0]["presence"], "in");
    now += 0.5;
    EXPECT_EQ(session()["participants"][0]["presence"], "lost");
    beat(token);
    EXPECT_EQ(session()["participants"][0]["presence"], "in");
}

TEST_F(Trainer, SeesAParticipantAsLeftAfterTheNoticeWithTheFlagsOfTheLastHeartbeat) {
    const std::string token = joined(server, "PROVA");
    beat(token);
    now += 7;
    beat(token, {{"disconnecting", true}, {"lockdownActive", false}, {"meetConnected", false}});
    now += 1000;
    const nlohmann::json person = session()["participants"][0];
    EXPECT_EQ(person["presence"], "left");
    EXPECT_EQ(person["leftAt"], standingTime + 7);
    EXPECT_EQ(person["lastHeartbeat"],
              nlohmann::json({{"receivedAt", standingTime}, {"lockdownActive", true}, {"meetConnected", true}}));
}

TEST_F(Trainer, SeesTheSecondsOfTheConfigurationAtWork) {
    PracticeConfiguration configuration = fourSessions();
    configuration.contactLostAfterSeconds = 1;
    PracticeServer hasty(configuration, [this] { return now; });
    joined(hasty, "PROVA");
    now += 1.5;
    EXPECT_EQ(parsed(hasty.handle(get("/trainer/state")))["sessions"][0]["participants"][0]["presence"], "lost");
}

TEST_F(Trainer, SeesTheNewestViolationFirstWhoeverItIsOf) {
    const std::string one = joined(server, "PROVA");
    const std::string other = joined(server, "PROVA");
    beat(one, {{"violations", {violation("1"), violation("2")}}});
    now += 1;
    beat(other, {{"violations", nlohmann::json::array({violation("3")})}});
    now += 1;
    beat(one, {{"violations", {violation("4"), violation("5")}}});
    EXPECT_EQ(details(session()["violations"]), (std::vector<std::string>{"5", "4", "3", "2", "1"}));
    EXPECT_EQ(session()["violations"][2]["participant"], 2);
}

TEST_F(Trainer, GetsTheNewestTwoHundredViolationsAndTheirNumber) {
    const std::string one = joined(server, "PROVA");
    const std::string other = joined(server, "PROVA");
    const auto many = [](const std::string& name, int count) {
        nlohmann::json list = nlohmann::json::array();
        for (int index = 1; index <= count; ++index) list.push_back(violation(name + std::to_string(index)));
        return nlohmann::json{{"violations", std::move(list)}};
    };
    beat(one, many("a", 300));
    now += 1;
    beat(other, many("b", 150));
    const nlohmann::json shown = session();
    EXPECT_EQ(shown["violationCount"], 450);
    ASSERT_EQ(shown["violations"].size(), 200U);
    EXPECT_EQ(shown["violations"][0]["detail"], "b150");
    EXPECT_EQ(shown["violations"][149]["detail"], "b1");
    EXPECT_EQ(shown["violations"][150]["detail"], "a300");
    EXPECT_EQ(shown["violations"][199]["detail"], "a251");
}

TEST_F(Trainer, EndsASessionWhichTheNextHeartbeatIsTold) {
    const std::string token = joined(server, "PROVA");
    EXPECT_EQ(parsed(beat(token)), nlohmann::json({{"sessionEnded", false}}));
    const PracticeReply reply = server.handle(post("/trainer/end/prova", ""));
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"code", "PROVA"}, {"status", "ENDED"}}));
    EXPECT_EQ(session()["status"], "ENDED");
    EXPECT_EQ(session(1)["status"], "WAITING");
    EXPECT_EQ(parsed(beat(token)), nlohmann::json({{"sessionEnded", true}}));
}

TEST_F(Trainer, IsToldOfASessionThatIsNotThere) {
    const PracticeReply reply = server.handle(post("/trainer/end/ALTRA", ""));
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"error", "session_not_found"}}));
}

TEST_F(Trainer, IsNeitherRecordedNorBent) {
    server.handle(post("/control/reply-rule", R"({"path":"*","status":500,"body":""})"));
    EXPECT_EQ(server.handle(get("/")).status, 200);
    EXPECT_EQ(server.handle(get("/trainer/state")).status, 200);
    EXPECT_EQ(server.handle(get("/trainer/unknown")).status, 404);
    EXPECT_EQ(server.handle(get("/trainer/end/PROVA")).status, 405);
    EXPECT_EQ(server.handle(post("/trainer/state", "")).status, 405);
    EXPECT_EQ(server.handle(post("/", "")).status, 405);
    EXPECT_EQ(server.handle(post("/trainer/end/PROVA", "")).status, 200);
    EXPECT_TRUE(server.received().empty());
    EXPECT_EQ(parsed(server.handle(get("/control/state")))["replyRules"][0]["used"], 0);
}

TEST_F(Trainer, EndsNothingByAGet) {
    server.handle(get("/trainer/end/PROVA"));
    EXPECT_EQ(session()["status"], "ACTIVE");
}

TEST_F(Trainer, HasAPageInItalian) {
    const PracticeReply page = server.handle(get("/"));
    EXPECT_EQ(page.contentType, "text/html; charset=utf-8");
    EXPECT_NE(page.body.find("<html lang=\"it\">"), std::string::npos);
}

TEST_F(Trainer, HasAPageThatIsTheSameWhoeverIsIn) {
    const std::string before = server.handle(get("/")).body;
    joined(server, "PROVA");
    EXPECT_EQ(server.handle(get("/")).body, before);
}

}  // namespace
}  // namespace vantrel::practice::test
