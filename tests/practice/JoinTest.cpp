#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "Requests.h"

namespace vantrel::practice::test {
namespace {

class Join : public testing::Test {
  protected:
    PracticeReply join(const std::string& code, const nlohmann::json& body) {
        return server.handle(post("/api/sessions/" + code + "/join", body.dump()));
    }

    PracticeServer server{fourSessions(), [] { return standingTime; }};
};

TEST_F(Join, GivesLinkTokenAndTitle) {
    const PracticeReply reply = join("PROVA", joinBody());
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"meetLink", "http://127.0.0.1:8787/meet/PROVA"},
                                             {"userToken", "practice-1"},
                                             {"sessionTitle", "Sicurezza"}}));
}

TEST_F(Join, RemembersWhoJoined) {
    join("PROVA", joinBody());
    const auto participants = server.participants();
    ASSERT_EQ(participants.size(), 1U);
    EXPECT_EQ(participants[0].token, "practice-1");
    EXPECT_EQ(participants[0].sessionCode, "PROVA");
    EXPECT_EQ(participants[0].fullName, "Anna Però");
    EXPECT_EQ(participants[0].email, "anna@example.org");
    EXPECT_EQ(participants[0].platform, "darwin");
    EXPECT_EQ(participants[0].clientVersion, "2.0-macOS");
    EXPECT_EQ(participants[0].joinedAt, standingTime);
    EXPECT_EQ(participants[0].heartbeatCount, 0U);
    EXPECT_FALSE(participants[0].leftAt.has_value());
}

TEST_F(Join, GivesASessionsOwnLinkWhereItHasOne) {
    EXPECT_EQ(parsed(join("FUORI", joinBody()))["meetLink"], "https://meet.example.org/privacy");
}

TEST_F(Join, BeginsTheLinkWithThePublicAddressWhereThereIsOne) {
    PracticeConfiguration configuration = fourSessions();
    configuration.publicAddress = "https://classe.example.org/";
    PracticeServer elsewhere(configuration, [] { return standingTime; });
    const PracticeReply reply = elsewhere.handle(post("/api/sessions/PROVA/join", joinBody().dump()));
    EXPECT_EQ(parsed(reply)["meetLink"], "https://classe.example.org/meet/PROVA");
}

TEST_F(Join, AdmitsToAWaitingSession) {
    EXPECT_EQ(join("ATTESA", joinBody()).status, 200);
}

TEST_F(Join, RefusesAnUnknownSession) {
    EXPECT_EQ(join("ALTRA", joinBody()).status, 404);
    EXPECT_EQ(join("prova", joinBody()).status, 404);
    EXPECT_TRUE(server.participants().empty());
}

TEST_F(Join, RefusesAnEndedSession) {
    const PracticeReply reply = join("CHIUSA", joinBody());
    EXPECT_EQ(reply.status, 410);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"error", "session_ended"}}));
    EXPECT_TRUE(server.participants().empty());
}

TEST_F(Join, RefusesABodyThatLacksAKeyOrHoldsAnother) {
    const nlohmann::json right = joinBody();
    for (const auto& [key, value] : right.items()) {
        nlohmann::json body = right;
        body.erase(key);
        EXPECT_EQ(join("PROVA", body).status, 400) << key;
        body[key] = 7;
        EXPECT_EQ(join("PROVA", body).status, 400) << key;
        body[key] = "";
        EXPECT_EQ(join("PROVA", body).status, key == "clientVersion" ? 200 : 400) << key;
    }
    nlohmann::json body = right;
    body["code"] = "PROVA";
    const PracticeReply reply = join("PROVA", body);
    EXPECT_EQ(reply.status, 400);
    EXPECT_EQ(parsed(reply),
              nlohmann::json({{"error", "invalid_body"}, {"message", "the body holds an unknown key \"code\""}}));
}

TEST_F(Join, RefusesABodyThatIsNoJsonObject) {
    for (const std::string body : {"", "[]", "null", "{", "\xFF\xFE", "{\"fullName\":\"\\ud800\"}"}) {
        const PracticeReply reply = server.handle(post("/api/sessions/PROVA/join", body));
        EXPECT_EQ(reply.status, 400) << body;
        EXPECT_EQ(parsed(reply)["error"], "invalid_body") << body;
    }
    EXPECT_EQ(server.handle(post("/api/sessions/PROVA/join", std::string(100000, '['))).status, 400);
    EXPECT_TRUE(server.participants().empty());
}

TEST_F(Join, RefusesAClientBelowTheMinimumVersion) {
    PracticeConfiguration configuration = fourSessions();
    configuration.version.minimum = "2.1";
    configuration.version.minimumMessage = "Troppo vecchia.";
    configuration.version.downloadUrl = "https://download.example.org";
    PracticeServer strict(configuration, [] { return standingTime; });
    const PracticeReply reply = strict.handle(post("/api/sessions/PROVA/join", joinBody().dump()));
    EXPECT_EQ(reply.status, 400);
    EXPECT_EQ(parsed(reply), nlohmann::json({{"error", "client_outdated"},
                                             {"message", "Troppo vecchia."},
                                             {"downloadUrl", "https://download.example.org"}}));
    EXPECT_TRUE(strict.participants().empty());

    nlohmann::json newer = joinBody();
    newer["clientVersion"] = "2.1-macOS";
    EXPECT_EQ(strict.handle(post("/api/sessions/PROVA/join", newer.dump())).status, 200);
}

TEST_F(Join, GivesEveryoneATokenOfTheirOwnWhenManyComeAtOnce) {
    constexpr std::size_t threadCount = 8;
    constexpr std::size_t joinsEach = 50;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (std::size_t number = 0; number < threadCount; ++number) {
        threads.emplace_back([this] {
            for (std::size_t count = 0; count < joinsEach; ++count) {
                const std::string token = joined(server, "PROVA");
                server.handle(post("/api/heartbeat", heartbeatBody("PROVA", token).dump()));
            }
        });
    }
    for (std::thread& thread : threads) thread.join();

    std::set<std::string> tokens;
    for (const PracticeParticipant& participant : server.participants()) {
        tokens.insert(participant.token);
        EXPECT_EQ(server.history(participant.number).heartbeats.size(), 1U);
    }
    EXPECT_EQ(tokens.size(), threadCount * joinsEach);
    EXPECT_EQ(server.received().size(), 2 * threadCount * joinsEach);
}

}  // namespace
}  // namespace vantrel::practice::test
