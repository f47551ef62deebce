#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;

/// The server's memory and its input are bounded.
class Bounds : public testing::Test {
  protected:
    nlohmann::json received() { return parsed(server.handle(get("/control/received"))); }
    nlohmann::json trainersSession() { return parsed(server.handle(get("/trainer/state")))["sessions"][0]; }
    nlohmann::json participant(const std::string& token) {
        return parsed(server.handle(get("/control/participants/" + token)));
    }

    PracticeReply beat(const std::string& token, const nlohmann::json& changes = nlohmann::json::object()) {
        nlohmann::json body = heartbeatBody("PROVA", token);
        body.update(changes);
        return server.handle(post("/api/heartbeat", body.dump()));
    }

    static nlohmann::json violations(int count, const std::string& type, const std::string& detail) {
        nlohmann::json list = nlohmann::json::array();
        for (int number = 1; number <= count; ++number) {
            list.push_back(
                {{"type", type}, {"detail", detail + std::to_string(number)}, {"at", "2024-05-17T09:41:01Z"}});
        }
        return {{"violations", std::move(list)}};
    }

    double now = standingTime;
    PracticeServer server{fourSessions(), [this] { return now; }};
};

TEST_F(Bounds, ABodyOverOneMebibyteIsRefusedWhereverItIsSent) {
    const std::string allowed(mebibyte, ' ');
    const std::string tooLong = allowed + " ";
    const std::string message = R"({"error":"body_too_large","message":"the body is longer than 1048576 bytes"})";
    for (const std::string path : {"/api/heartbeat", "/api/sessions/PROVA/join", "/meet/PROVA/reports",
                                   "/control/reply-rule", "/control/reset", "/trainer/end/PROVA", "/api/unknown"}) {
        EXPECT_NE(server.handle(post(path, allowed)).status, 413) << path;
        const PracticeReply reply = server.handle(post(path, tooLong));
        EXPECT_EQ(reply.status, 413) << path;
        EXPECT_EQ(reply.body, message) << path;
    }
}

TEST_F(Bounds, ARefusedBodyIsRecordedWithoutIt) {
    server.handle(post("/api/heartbeat", std::string(mebibyte + 1, 'x')));
    const nlohmann::json list = received();
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]["status"], 413);
    EXPECT_EQ(list[0]["path"], "/api/heartbeat");
    EXPECT_EQ(list[0]["body"], "");
}

TEST_F(Bounds, ARefusalOfABodyCanBeBentLikeAnyReply) {
    server.handle(post("/control/reply-rule", R"({"path":"/api/heartbeat","status":500})"));
    EXPECT_EQ(server.handle(post("/api/heartbeat", std::string(mebibyte + 1, 'x'))).status, 500);
}

TEST_F(Bounds, ABodyNestedTooDeeplyIsRefusedUnread) {
    const auto nested = [](std::size_t depth, const std::string& open, const std::string& close) {
        std::string text;
        for (std::size_t level = 0; level < depth; ++level) text += open;
        for (std::size_t level = 0; level < depth; ++level) text += close;
        return text;
    };
    const std::string message = "the body is nested more than 16 deep";
    for (const std::string path :
         {"/api/heartbeat", "/api/sessions/PROVA/join", "/meet/PROVA/reports", "/control/reply-rule"}) {
        const auto messageFor = [&](const std::string& body) {
            return parsed(server.handle(post(path, body))).value("message", "");
        };
        EXPECT_NE(messageFor(nested(16, "[", "]")), message) << path;
        EXPECT_EQ(messageFor(nested(17, "[", "]")), message) << path;
        EXPECT_EQ(messageFor(nested(17, "{\"a\":", "}")), message) << path;
        EXPECT_EQ(messageFor(std::string(20000, '[')), message) << path;
        EXPECT_NE(messageFor("\"" + std::string(1000, '[') + "\""), message) << path;
        EXPECT_NE(messageFor("\"\\\"" + std::string(1000, '[') + "\""), message) << path;
        EXPECT_EQ(messageFor("[\"\\\\\"," + std::string(17, '[') + "]"), message) << path;
        EXPECT_NE(messageFor(nested(1000, "[]", "")), message) << path;
    }
}

TEST_F(Bounds, TheNewestTenThousandExchangesAreKept) {
    const std::uint64_t first = server.handle(get("/api/sessions/PROVA")).exchange;
    for (int count = 0; count < 10004; ++count) server.handle(get("/api/sessions/PROVA"));
    server.noteDelivery(first, false);
    server.noteDelivery(7, false);
    const nlohmann::json list = received();
    ASSERT_EQ(list.size(), 10000U);
    EXPECT_EQ(list.front()["number"], 6);
    EXPECT_EQ(list.back()["number"], 10005);
    EXPECT_EQ(list[0]["delivered"], true);
    EXPECT_EQ(list[1]["delivered"], false);
}

TEST_F(Bounds, OfLargeExchangesAsManyAreKeptAsFitIntoThirtyTwoMebibytes) {
    for (int count = 0; count < 40; ++count) server.handle(post("/api/heartbeat", std::string(mebibyte, 'x')));
    const nlohmann::json list = received();
    ASSERT_EQ(list.size(), 31U);
    EXPECT_EQ(list.back()["number"], 40);
    EXPECT_EQ(list.back()["body"].get_ref<const std::string&>().size(), mebibyte);
    server.handle(post("/control/reset", R"({"only":["received"]})"));
    for (int count = 0; count < 31; ++count) server.handle(post("/api/heartbeat", std::string(mebibyte, 'x')));
    EXPECT_EQ(received().size(), 31U);
}

TEST_F(Bounds, ManyHeadersCountAmongTheBytes) {
    PracticeRequest request = get("/api/sessions/PROVA");
    for (int count = 0; count < 50000; ++count) request.headers.emplace_back("a", "");
    for (int count = 0; count < 20; ++count) server.handle(request);
    EXPECT_LT(server.received().size(), 20U);
    EXPECT_GT(server.received().size(), 5U);
}

TEST_F(Bounds, TheNewestHeartbeatsAndViolationsOfAParticipantAreKeptAndAllAreCounted) {
    const std::string token = joined(server, "PROVA");
    for (int count = 0; count < 2410; ++count, now += 15) beat(token);
    now = standingTime;
    beat(token, violations(150, "KEY_BLOCKED", "a"));
    beat(token, violations(100, "KEY_BLOCKED", "b"));
    const nlohmann::json person = participant(token);
    EXPECT_EQ(person["heartbeatCount"], 2412);
    ASSERT_EQ(person["heartbeats"].size(), 2400U);
    EXPECT_EQ(person["heartbeats"][0]["receivedAt"], standingTime + 15 * 12);
    EXPECT_EQ(person["violationCount"], 250);
    ASSERT_EQ(person["violations"].size(), 200U);
    EXPECT_EQ(person["violations"][0]["detail"], "a51");
    EXPECT_EQ(person["violations"][199]["detail"], "b100");
    const nlohmann::json listed = parsed(server.handle(get("/control/state")))["sessions"][0]["participants"][0];
    EXPECT_EQ(listed["heartbeats"].size(), 50U);
    EXPECT_EQ(listed["violations"].size(), 50U);
    EXPECT_EQ(listed["violations"][49]["detail"], "b100");
    EXPECT_EQ(listed["heartbeatCount"], 2412);
}

TEST_F(Bounds, OneHeartbeatWithVeryManyViolationsIsCountedWholeAndItsNewestAreKept) {
    const std::string token = joined(server, "PROVA");
    EXPECT_EQ(beat(token, violations(5000, "KEY_BLOCKED", "")).status, 200);
    EXPECT_EQ(trainersSession()["violationCount"], 5000);
    EXPECT_EQ(trainersSession()["violations"][0]["detail"], "5000");
    EXPECT_EQ(participant(token)["violations"][0]["detail"], "4801");
}

TEST_F(Bounds, LongTextsAreKeptUpToFiveHundredBytesAndStayUtf8) {
    nlohmann::json body = joinBody();
    // The 500th byte is the first of a letter of two bytes.
    body["fullName"] = std::string(499, 'y') + "ò" + std::string(100000, 'z');
    body["email"] = std::string(500, 'e');
    body["clientVersion"] = "2.0-" + std::string(300, 'v');
    const std::string token =
        parsed(server.handle(post("/api/sessions/PROVA/join", body.dump()))).value("userToken", "");
    beat(token, violations(1, std::string(300, 'T'), std::string(10000, 'd')));
    const nlohmann::json person = participant(token);
    EXPECT_EQ(person["fullName"], std::string(499, 'y'));
    EXPECT_EQ(person["email"], std::string(500, 'e'));
    EXPECT_EQ(person["clientVersion"], "2.0-" + std::string(96, 'v'));
    EXPECT_EQ(person["violations"][0]["type"], std::string(100, 'T'));
    EXPECT_EQ(person["violations"][0]["detail"], std::string(500, 'd'));
}

TEST_F(Bounds, WhoLeftOrWasLostMakesPlaceForOneWhoJoinsAndWhoIsInDoesNot) {
    const std::string present = joined(server, "PROVA");
    const std::string lost = joined(server, "PROVA");
    const std::string left = joined(server, "PROVA");
    beat(left, {{"disconnecting", true}});
    now += 100;
    beat(present);
    for (int count = 3; count < 500; ++count) EXPECT_NE(joined(server, "PROVA"), "");
    EXPECT_EQ(trainersSession()["participants"].size(), 500U);
    EXPECT_EQ(joined(server, "PROVA"), "practice-501");
    EXPECT_EQ(joined(server, "PROVA"), "practice-502");
    EXPECT_EQ(trainersSession()["participants"].size(), 500U);
    EXPECT_EQ(beat(present).status, 200);
    EXPECT_EQ(beat(lost).status, 401);
    EXPECT_EQ(beat(left).status, 401);

    const PracticeReply refusal = server.handle(post("/api/sessions/PROVA/join", joinBody().dump()));
    EXPECT_EQ(refusal.status, 503);
    EXPECT_EQ(parsed(refusal), nlohmann::json({{"error", "too_many_participants"}}));
    EXPECT_EQ(beat(present).status, 200);
    EXPECT_EQ(beat("practice-502").status, 200);
}

TEST_F(Bounds, TheOneHeardOfLongestAgoIsForgottenFirst) {
    const std::string first = joined(server, "PROVA");
    now += 1;
    const std::string second = joined(server, "PROVA");
    now += 1;
    beat(first);
    for (int count = 2; count < 500; ++count) joined(server, "PROVA");
    now += 41;
    joined(server, "PROVA");
    EXPECT_EQ(beat(second).status, 401);
    EXPECT_EQ(beat(first).status, 200);
}

TEST_F(Bounds, TwoHundredAndFiftySixReplyRulesStandAndUsedUpOnesMakePlace) {
    const auto changeReply = [&](const std::string& rule) { return server.handle(post("/control/reply-rule", rule)); };
    changeReply(R"({"path":"/api/sessions/PROVA","status":500,"times":1})");
    for (int count = 1; count < 256; ++count) EXPECT_EQ(changeReply(R"({"path":"/none"})").status, 200);
    const PracticeReply refusal = changeReply(R"({"path":"/none"})");
    EXPECT_EQ(refusal.status, 400);
    EXPECT_EQ(parsed(refusal)["message"], "there are 256 rules already");
    EXPECT_EQ(server.handle(get("/api/sessions/PROVA")).status, 500);
    EXPECT_EQ(parsed(changeReply(R"({"path":"/none"})")), nlohmann::json({{"rule", 257}}));
    EXPECT_EQ(changeReply(R"({"path":"/none"})").status, 400);
    server.handle(post("/control/reset", ""));
    EXPECT_EQ(changeReply(R"({"path":"/none"})").status, 200);
}

}  // namespace
}  // namespace vantrel::practice::test
