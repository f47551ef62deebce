#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rehearsal/playing/RehearsalNetwork.h"

namespace vantrel::rehearsal {
namespace {

using namespace virtualmac;

URLRequest get(std::string address) {
    URLRequest request;
    request.url = {std::move(address)};
    return request;
}

ServerSetup setup() {
    ServerSetup server;
    server.address = "http://server.example:8080";
    server.latency = 0.25;
    server.sessions.push_back({"ABC", "Titolo", practice::SessionStatus::active, ""});
    return server;
}

ExchangeRule rule(std::string path) {
    ExchangeRule rule;
    rule.reply.path = std::move(path);
    return rule;
}

RehearsalNetwork network(const ServerSetup& server) {
    return RehearsalNetwork(server, [] { return 0.0; });
}

const std::string session = "http://server.example:8080/api/sessions/ABC";

TEST(RehearsalNetwork, AnswersAsThePracticeServerDoes) {
    auto net = network(setup());
    const auto answer = net.answer(get(session));
    EXPECT_EQ(answer.latency, 0.25);
    const auto& http = std::get<HTTPAnswer>(answer.answer);
    EXPECT_EQ(http.status, 200);
    ASSERT_EQ(http.body.size(), 1U);
    EXPECT_EQ(http.body[0].bytes, R"({"code":"ABC","status":"ACTIVE","title":"Titolo"})");
    EXPECT_EQ(http.headers, (std::vector<std::pair<std::string, std::string>>{{"Content-Type", "application/json"}}));
}

TEST(RehearsalNetwork, KnowsNoOtherHost) {
    auto net = network(setup());
    for (const char* address :
         {"http://server.example/api/sessions/ABC", "https://server.example:8080/api/sessions/ABC",
          "http://altro.example:8080/api/sessions/ABC"}) {
        const auto answer = net.answer(get(address));
        EXPECT_EQ(std::get<TransportFailure>(answer.answer).text,
                  "Impossibile trovare un server con il nome host specificato.");
    }
}

TEST(RehearsalNetwork, KnowsItsHostInAnyCase) {
    auto server = setup();
    server.address = "http://Server.example:8080";
    auto net = network(server);
    const auto answer = net.answer(get("HTTP://SERVER.example:8080/api/sessions/ABC"));
    EXPECT_EQ(std::get<HTTPAnswer>(answer.answer).status, 200);
}

TEST(RehearsalNetwork, KeepsADoubleSlashInThePath) {
    auto net = network(setup());
    const auto answer = net.answer(get("http://server.example:8080//api/sessions/ABC"));
    EXPECT_EQ(std::get<HTTPAnswer>(answer.answer).status, 404);
}

TEST(RehearsalNetwork, UsesTheFirstRuleThatIsNotUsedUp) {
    auto server = setup();
    server.replies = {rule("/api/sessions/ABC"), rule("/api/*")};
    server.replies[0].reply.status = 501;
    server.replies[0].reply.times = 1;
    server.replies[1].reply.status = 502;
    auto net = network(server);
    EXPECT_EQ(std::get<HTTPAnswer>(net.answer(get(session)).answer).status, 501);
    EXPECT_EQ(std::get<HTTPAnswer>(net.answer(get(session)).answer).status, 502);
    net.removeRules();
    EXPECT_EQ(std::get<HTTPAnswer>(net.answer(get(session)).answer).status, 200);
}

TEST(RehearsalNetwork, PutsANewRuleBeforeTheOthers) {
    auto server = setup();
    server.replies = {rule("/api/*")};
    server.replies[0].reply.status = 501;
    auto net = network(server);
    auto later = rule("/api/*");
    later.reply.status = 502;
    net.add(later);
    EXPECT_EQ(std::get<HTTPAnswer>(net.answer(get(session)).answer).status, 502);
}

TEST(RehearsalNetwork, TakesConditionsWhileItRuns) {
    auto server = setup();
    server.replies = {rule("/api/sessions/*")};
    server.replies[0].reply.status = 501;
    auto net = network(server);
    ServerConditions conditions;
    conditions.latency = 2;
    conditions.sessions.push_back({"DUE", "Altra", practice::SessionStatus::active, ""});
    conditions.version.emplace().latest = "3.0-macOS";
    conditions.replies = {rule("/api/sessions/DUE"), rule("/api/sessions/*")};
    conditions.replies[0].reply.times = 1;
    conditions.replies[0].reply.status = 502;
    conditions.replies[1].reply.times = 1;
    conditions.replies[1].reply.status = 503;
    net.apply(conditions);
    const auto answer = [&net](const std::string& path) {
        const auto whole = net.answer(get("http://server.example:8080" + path));
        EXPECT_EQ(whole.latency, 2);
        return std::get<HTTPAnswer>(whole.answer);
    };
    // The new rules in their order, then the existing one; its body is the new session's.
    EXPECT_EQ(answer("/api/sessions/DUE").status, 502);
    EXPECT_EQ(answer("/api/sessions/DUE").status, 503);
    const auto last = answer("/api/sessions/DUE");
    EXPECT_EQ(last.status, 501);
    EXPECT_EQ(last.body[0].bytes, R"({"code":"DUE","status":"ACTIVE","title":"Altra"})");
    EXPECT_THAT(answer("/api/version/latest?os=macos&current=2.0-macOS").body[0].bytes,
                testing::HasSubstr(R"("latestVersion":"3.0-macOS")"));
}

TEST(RehearsalNetwork, LeavesWhatNoConditionNames) {
    auto net = network(setup());
    net.apply({});
    const auto answer = net.answer(get(session));
    EXPECT_EQ(answer.latency, 0.25);
    EXPECT_EQ(std::get<HTTPAnswer>(answer.answer).status, 200);
}

TEST(RehearsalNetwork, MeetsAtItsOwnAddress) {
    auto net = network(setup());
    URLRequest join = get(session + "/join");
    join.method = "POST";
    join.body = R"({"fullName":"N","email":"e@x","platform":"darwin","clientVersion":"2.0-macOS"})";
    EXPECT_THAT(std::get<HTTPAnswer>(net.answer(join).answer).body[0].bytes,
                testing::HasSubstr("http://server.example:8080/meet/ABC"));
}

TEST(RehearsalNetwork, EndsExchangesInEveryWay) {
    using Ending = ExchangeRule::Ending;
    auto server = setup();
    for (int index = 0; index < 5; ++index) {
        server.replies.push_back(rule("*"));
        server.replies.back().reply.times = 1;
        server.replies.back().reply.delaySeconds = 2;
    }
    server.replies[0].ending = Ending::transportError;
    server.replies[0].errorText = "Giù";
    server.replies[1].ending = Ending::silence;
    server.replies[2].ending = Ending::notHTTP;
    server.replies[3].reply.dropConnection = true;
    server.replies[4].reply.stallAfterHeaders = true;
    auto net = network(server);

    const auto error = net.answer(get(session));
    EXPECT_EQ(std::get<TransportFailure>(error.answer).text, "Giù");
    EXPECT_EQ(error.latency, 2.25);
    EXPECT_TRUE(std::holds_alternative<NoAnswer>(net.answer(get(session)).answer));
    EXPECT_FALSE(std::get<NotHTTP>(net.answer(get(session)).answer).body.empty());
    EXPECT_EQ(std::get<TransportFailure>(net.answer(get(session)).answer).text,
              "La connessione di rete è stata persa.");
    EXPECT_EQ(std::get<StallAfterHeaders>(net.answer(get(session)).answer).status, 200);
}

TEST(RehearsalNetwork, CutsABodyIntoPiecesWithoutLosingAByte) {
    auto server = setup();
    server.replies = {rule("*")};
    server.replies[0].reply.body = "0123456789";
    server.replies[0].pieces = 4;
    server.replies[0].pause = 5;
    auto net = network(server);
    const auto answer = net.answer(get(session));
    const auto& pieces = std::get<HTTPAnswer>(answer.answer).body;
    ASSERT_EQ(pieces.size(), 4U);
    std::string body;
    for (const auto& piece : pieces) {
        EXPECT_EQ(piece.pause, 5);
        EXPECT_FALSE(piece.bytes.empty());
        body += piece.bytes;
    }
    EXPECT_EQ(body, "0123456789");
}

TEST(RehearsalNetwork, EndsSessionsThatExist) {
    auto net = network(setup());
    EXPECT_FALSE(net.endSession("XYZ"));
    EXPECT_TRUE(net.endSession("abc"));
    const auto answer = net.answer(get(session));
    EXPECT_EQ(std::get<HTTPAnswer>(answer.answer).body[0].bytes, R"({"code":"ABC","status":"ENDED","title":"Titolo"})");
}

}  // namespace
}  // namespace vantrel::rehearsal
