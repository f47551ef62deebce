#include <gtest/gtest.h>

#include <cmath>

#include "platform/virtual/network/Exchange.h"

namespace vantrel::virtualmac {
namespace {

HTTPAnswer pieces(std::vector<BodyPiece> body) {
    HTTPAnswer answer;
    answer.body = std::move(body);
    return answer;
}

URLRequest request(std::string method, std::optional<std::string> body = std::nullopt) {
    URLRequest made;
    made.url.absoluteString = "http://h/a/b";
    made.method = std::move(method);
    made.headers = {{"Content-Type", "application/json"}, {"X-A", "b"}};
    made.body = std::move(body);
    return made;
}

TEST(Exchange, CollectsTheBodyUntilItsLastPiece) {
    const auto result = outcome({0.5, pieces({{1, "ab"}, {2, ""}, {3, "c"}})}, 10);
    EXPECT_EQ(6.5, result.after);
    EXPECT_EQ("abc", result.reply.data);
    EXPECT_EQ(200, result.reply.statusCode);
    EXPECT_FALSE(result.reply.error);
}

TEST(Exchange, StartsTheTimeOutAnewWithWhateverArrives) {
    EXPECT_FALSE(outcome({9, pieces({{9, "a"}, {9, "b"}})}, 10).reply.error);
    const auto late = outcome({9, pieces({{9, "a"}, {11, "b"}, {1, "c"}})}, 10);
    EXPECT_EQ(28, late.after);
    ASSERT_TRUE(late.reply.error);
    EXPECT_EQ("La richiesta è scaduta.", late.reply.error->localizedDescription);
    EXPECT_FALSE(late.reply.data);
    EXPECT_FALSE(late.reply.statusCode);
}

TEST(Exchange, LetsTheTimeOutRunOnUnderPiecesWithoutBytes) {
    const auto late = outcome({1, pieces({{4, "a"}, {4, ""}, {4, ""}, {4, "b"}})}, 10);
    EXPECT_EQ(15, late.after);
    ASSERT_TRUE(late.reply.error);
    EXPECT_FALSE(late.reply.data);
    EXPECT_EQ(10, outcome({0, pieces({{5, ""}, {5, ""}, {5, ""}})}, 10).after);
    const auto inTime = outcome({1, pieces({{4, ""}, {4, "a"}, {4, ""}, {4, "b"}})}, 10);
    EXPECT_EQ(17, inTime.after);
    EXPECT_EQ("ab", inTime.reply.data);
}

TEST(Exchange, TimesOutWithoutAnAnswerOrAfterTheHeaders) {
    EXPECT_EQ(8, outcome(NetworkAnswer::silence(), 8).after);
    EXPECT_TRUE(outcome(NetworkAnswer::silence(), 8).reply.error);
    EXPECT_EQ(11, outcome(NetworkAnswer::stall(200, 3), 8).after);
    EXPECT_TRUE(outcome(NetworkAnswer::stall(200, 3), 8).reply.error);
    EXPECT_EQ(8, outcome(NetworkAnswer::failure("x", 20), 8).after);
    EXPECT_TRUE(std::isinf(outcome(NetworkAnswer::silence(), 0).after));
}

TEST(Exchange, CountsABodyOfZeroBytesAsNone) {
    EXPECT_FALSE(outcome(NetworkAnswer::reply(204, ""), 8).reply.data);
}

TEST(Exchange, LosesTheBodyWithTheConnection) {
    auto answer = pieces({{1, "half"}});
    answer.brokenOff = "La connessione di rete è stata persa.";
    const auto result = outcome({1, answer}, 8);
    EXPECT_EQ(2, result.after);
    EXPECT_EQ("La connessione di rete è stata persa.", result.reply.error->localizedDescription);
    EXPECT_FALSE(result.reply.data);
}

TEST(Exchange, HasNoStatusWhenTheResponseIsNotHTTP) {
    const auto result = outcome({0, NotHTTP{"x"}}, 8);
    EXPECT_FALSE(result.reply.statusCode);
    EXPECT_FALSE(result.reply.error);
    EXPECT_EQ("x", result.reply.data);
}

TEST(Exchange, TurnsPostIntoGetWithoutItsBodyFor301To303) {
    for (const int status : {301, 302, 303}) {
        const auto next = redirected(request("POST", "x"), NetworkAnswer::redirect(status, "c"));
        ASSERT_TRUE(next);
        EXPECT_EQ("GET", next->method);
        EXPECT_FALSE(next->body);
        EXPECT_EQ("http://h/a/c", next->url.absoluteString);
        EXPECT_EQ((std::vector<std::pair<std::string, std::string>>{{"X-A", "b"}}), next->headers);
    }
}

TEST(Exchange, KeepsMethodAndBodyFor307And308) {
    for (const int status : {307, 308}) {
        const auto next = redirected(request("POST", "x"), NetworkAnswer::redirect(status, "https://other/"));
        ASSERT_TRUE(next);
        EXPECT_EQ("POST", next->method);
        EXPECT_EQ("x", next->body);
        EXPECT_EQ("https://other/", next->url.absoluteString);
    }
}

TEST(Exchange, TurnsPutIntoGetFor303Only) {
    EXPECT_EQ("PUT", redirected(request("PUT"), NetworkAnswer::redirect(302, "c"))->method);
    EXPECT_EQ("GET", redirected(request("PUT"), NetworkAnswer::redirect(303, "c"))->method);
    EXPECT_EQ("HEAD", redirected(request("HEAD"), NetworkAnswer::redirect(303, "c"))->method);
}

TEST(Exchange, FollowsNothingElse) {
    for (const int status : {200, 300, 304, 305, 400}) {
        EXPECT_FALSE(redirected(request("GET"), NetworkAnswer::redirect(status, "c"))) << status;
    }
    EXPECT_FALSE(redirected(request("GET"), NetworkAnswer::reply(302, "")));
}

TEST(Exchange, SupportsHTTPWithAHost) {
    for (const char* text : {"http://h", "HTTPS://h/x"}) EXPECT_TRUE(isSupported(URL{text})) << text;
    for (const char* text : {"h/x", "localhost:80", "ftp://h", "http:", "http:///x", "//h"}) {
        EXPECT_FALSE(isSupported(URL{text})) << text;
    }
}

}  // namespace
}  // namespace vantrel::virtualmac
