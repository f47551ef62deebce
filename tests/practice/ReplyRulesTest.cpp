#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class ReplyChanges : public testing::Test {
  protected:
    PracticeReply changeReply(const nlohmann::json& rule) {
        return server.handle(post("/control/reply-rule", rule.dump()));
    }
    PracticeReply probe() { return server.handle(get("/api/sessions/PROVA")); }

    PracticeServer server{fourSessions(), [] { return standingTime; }};
};

TEST_F(ReplyChanges, AnswersWithTheRulesNumber) {
    const PracticeReply first = changeReply({{"path", "/api/*"}});
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(parsed(first), nlohmann::json({{"rule", 1}}));
    EXPECT_EQ(parsed(changeReply({{"path", "/api/*"}})), nlohmann::json({{"rule", 2}}));
}

TEST_F(ReplyChanges, ReplacesStatusTypeAndBody) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"status", 503}, {"contentType", "text/plain"}, {"body", "giù"}});
    const PracticeReply reply = probe();
    EXPECT_EQ(reply.status, 503);
    EXPECT_EQ(reply.contentType, "text/plain");
    EXPECT_EQ(reply.body, "giù");
}

TEST_F(ReplyChanges, LeavesAloneWhatTheRuleDoesNotName) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"delaySeconds", 2.5}});
    const PracticeReply reply = probe();
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply)["status"], "ACTIVE");
    EXPECT_EQ(reply.delaySeconds, 2.5);
    EXPECT_FALSE(reply.dropConnection);
    EXPECT_FALSE(reply.stallAfterHeaders);
}

TEST_F(ReplyChanges, AppliesAsOftenAsSaid) {
    changeReply({{"path", "/api/*"}, {"status", 500}, {"times", 2}});
    EXPECT_EQ(probe().status, 500);
    EXPECT_EQ(probe().status, 500);
    EXPECT_EQ(probe().status, 200);
}

TEST_F(ReplyChanges, GoesThroughTheRulesInTheirOrder) {
    changeReply({{"path", "/api/*"}, {"status", 500}, {"times", 1}});
    changeReply({{"path", "/api/*"}, {"dropConnection", true}, {"times", 1}});
    changeReply({{"path", "/api/*"}, {"status", 502}});
    EXPECT_EQ(probe().status, 500);
    EXPECT_TRUE(probe().dropConnection);
    const PracticeReply third = probe();
    EXPECT_EQ(third.status, 502);
    EXPECT_FALSE(third.dropConnection);
    EXPECT_EQ(probe().status, 502);
}

TEST_F(ReplyChanges, MatchesMethodAndPath) {
    changeReply({{"method", "POST"}, {"path", "/api/sessions/PROVA"}, {"status", 500}});
    EXPECT_EQ(probe().status, 200);
    EXPECT_EQ(server.handle(post("/api/sessions/PROVA", "")).status, 500);
    changeReply({{"path", "/api/version/latest"}, {"status", 501}});
    EXPECT_EQ(server.handle(get("/api/version/latest?os=macos&current=2.0")).status, 501);
    EXPECT_EQ(server.handle(get("/api/version/latest2")).status, 404);
    changeReply({{"path", "/api/version/oldest?os=macos"}, {"status", 502}});
    EXPECT_EQ(server.handle(get("/api/version/oldest?os=macos")).status, 502);
    EXPECT_EQ(server.handle(get("/api/version/oldest?os=linux")).status, 404);
    changeReply({{"path", "/meet/*"}, {"status", 503}});
    EXPECT_EQ(server.handle(get("/meet/")).status, 503);
    EXPECT_EQ(server.handle(get("/mee")).status, 404);
}

TEST_F(ReplyChanges, CarriesTheExchangeOutAllTheSame) {
    changeReply({{"path", "/api/sessions/PROVA/join"}, {"dropConnection", true}});
    EXPECT_TRUE(server.handle(post("/api/sessions/PROVA/join", joinBody().dump())).dropConnection);
    EXPECT_EQ(server.participants().size(), 1U);
}

TEST_F(ReplyChanges, Redirects) {
    changeReply({{"path", "/api/old"}, {"location", "/api/sessions/PROVA"}});
    const PracticeReply reply = server.handle(get("/api/old"));
    EXPECT_EQ(reply.status, 302);
    EXPECT_EQ(reply.headers, (std::vector<std::pair<std::string, std::string>>{{"Location", "/api/sessions/PROVA"}}));
    changeReply({{"path", "/api/older"}, {"location", "/"}, {"status", 307}});
    EXPECT_EQ(server.handle(get("/api/older")).status, 307);
}

TEST_F(ReplyChanges, SendsAnyBytes) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"bodyBase64", "AP/+"}});
    EXPECT_EQ(probe().body, std::string("\0\xFF\xFE", 3));
}

TEST_F(ReplyChanges, RepeatsABodyToASize) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"bodySize", 7}, {"body", "abc"}, {"times", 1}});
    EXPECT_EQ(probe().body, "abcabca");
    changeReply({{"path", "/api/sessions/PROVA"}, {"bodySize", ReplyRule::largestBody}, {"times", 1}});
    EXPECT_EQ(probe().body.size(), ReplyRule::largestBody);
    changeReply({{"path", "/api/sessions/PROVA"}, {"bodySize", 0}});
    EXPECT_EQ(probe().body, "");
}

TEST_F(ReplyChanges, RefusesAWrongRule) {
    const auto message = [&](const std::string& rule) {
        const PracticeReply reply = server.handle(post("/control/reply-rule", rule));
        EXPECT_EQ(reply.status, 400) << rule;
        EXPECT_EQ(parsed(reply)["error"], "invalid_reply_rule") << rule;
        return parsed(reply).value("message", "");
    };
    EXPECT_EQ(message(""), "the body is not JSON");
    EXPECT_EQ(message("[]"), "the body is not a JSON object");
    EXPECT_EQ(message("{}"), "\"path\" is missing");
    EXPECT_EQ(message(R"({"path":"/","staus":500})"), "unknown key \"staus\"");
    EXPECT_EQ(message(R"({"path":7})"), "\"path\" is not a string");
    EXPECT_EQ(message(R"({"path":"/","status":"500"})"), "\"status\" is not between 200 and 599");
    EXPECT_EQ(message(R"({"path":"/","status":100})"), "\"status\" is not between 200 and 599");
    EXPECT_EQ(message(R"({"path":"/","times":0})"), "\"times\" is not a whole number of at least 1");
    EXPECT_EQ(message(R"({"path":"/","times":-1})"), "\"times\" is not a whole number of at least 1");
    EXPECT_EQ(message(R"({"path":"/","bodySize":67108865})"), "\"bodySize\" is not between 0 and 67108864");
    EXPECT_EQ(message(R"({"path":"/","delaySeconds":-0.1})"), "\"delaySeconds\" is not between 0 and 3600");
    EXPECT_EQ(message(R"({"path":"/","dropConnection":1})"), "\"dropConnection\" is not a boolean");
    EXPECT_EQ(message(R"({"path":"/","bodyBase64":"A"})"), "\"bodyBase64\" is not a string of base64 with its padding");
    EXPECT_EQ(message(R"({"path":"/","body":"","bodyBase64":""})"), "both \"body\" and \"bodyBase64\"");
    EXPECT_EQ(probe().status, 200);
}

}  // namespace
}  // namespace vantrel::practice::test
