#include <gtest/gtest.h>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class Probe : public testing::Test {
  protected:
    PracticeServer server{fourSessions(), [] { return standingTime; }};
};

TEST_F(Probe, TellsASessionsStatus) {
    const PracticeReply active = server.handle(get("/api/sessions/PROVA"));
    EXPECT_EQ(active.status, 200);
    EXPECT_EQ(active.contentType, "application/json");
    EXPECT_EQ(parsed(active), nlohmann::json({{"code", "PROVA"}, {"title", "Sicurezza"}, {"status", "ACTIVE"}}));
    EXPECT_EQ(parsed(server.handle(get("/api/sessions/ATTESA")))["status"], "WAITING");
    EXPECT_EQ(parsed(server.handle(get("/api/sessions/CHIUSA")))["status"], "ENDED");
}

TEST_F(Probe, KnowsASessionThatIsAddedUntilAReset) {
    EXPECT_TRUE(server.addSession({"NUOVA", "Titolo", SessionStatus::waiting, ""}));
    EXPECT_EQ(parsed(server.handle(get("/api/sessions/NUOVA"))),
              nlohmann::json({{"code", "NUOVA"}, {"title", "Titolo"}, {"status", "WAITING"}}));
    server.reset();
    EXPECT_EQ(server.handle(get("/api/sessions/NUOVA")).status, 404);
}

TEST_F(Probe, AddsNoSecondSessionOfOneCode) {
    EXPECT_FALSE(server.addSession({"PROVA", "Altra", SessionStatus::ended, ""}));
    EXPECT_EQ(parsed(server.handle(get("/api/sessions/PROVA")))["title"], "Sicurezza");
}

TEST_F(Probe, DoesNotKnowALowerCaseCode) {
    const PracticeReply reply = server.handle(get("/api/sessions/prova"));
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"error", "session_not_found"}}));
}

TEST_F(Probe, DoesNotKnowAnUnknownCode) {
    for (const std::string path : {"/api/sessions/ALTRA", "/api/sessions/", "/api/sessions/PROV%41"}) {
        EXPECT_EQ(server.handle(get(path)).status, 404) << path;
    }
}

TEST_F(Probe, TakesADoubleSlashForAnotherPathAndRecordsIt) {
    const PracticeReply reply = server.handle(get("//api/sessions/PROVA"));
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"error", "not_found"}}));
    ASSERT_EQ(server.received().size(), 1U);
    EXPECT_EQ(server.received()[0].request.path, "//api/sessions/PROVA");
    EXPECT_EQ(server.received()[0].status, 404);
}

TEST_F(Probe, DoesNotKnowOtherPaths) {
    for (const std::string path : {"", "*", "api/sessions/PROVA", "/api", "/api/sessions", "/api/sessions/PROVA/",
                                   "/api/sessions/PROVA/join/", "/api/heartbeat/", "/API/sessions/PROVA"}) {
        EXPECT_EQ(server.handle(get(path)).status, 404) << path;
    }
}

TEST_F(Probe, NamesTheMethodThatAPathTakes) {
    const auto allowed = [&](const std::string& method, const std::string& path) {
        const PracticeReply reply = server.handle({method, path, {{"Host", "127.0.0.1:8787"}}, ""});
        EXPECT_EQ(reply.status, 405) << method << path;
        return reply.headers;
    };
    using Headers = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(allowed("POST", "/api/sessions/PROVA"), (Headers{{"Allow", "GET"}}));
    EXPECT_EQ(allowed("HEAD", "/api/sessions/PROVA"), (Headers{{"Allow", "GET"}}));
    EXPECT_EQ(allowed("GET", "/api/sessions/PROVA/join"), (Headers{{"Allow", "POST"}}));
    EXPECT_EQ(allowed("GET", "/api/heartbeat"), (Headers{{"Allow", "POST"}}));
    EXPECT_EQ(allowed("POST", "/api/version/latest?os=macos&current=2.0"), (Headers{{"Allow", "GET"}}));
    EXPECT_EQ(allowed("POST", "/meet/PROVA"), (Headers{{"Allow", "GET"}}));
    EXPECT_EQ(allowed("GET", "/control/reply-rule"), (Headers{{"Allow", "POST"}}));
}

}  // namespace
}  // namespace vantrel::practice::test
