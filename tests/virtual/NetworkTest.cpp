#include <atomic>
#include <string>

#include "tests/virtual/MacTest.h"

namespace vantrel::virtualmac {
namespace {

using Lines = std::vector<std::string>;

class NetworkTest : public MacTest {
  protected:
    void get(std::string address, std::string name = "reply") { send("GET", std::move(address), {}, std::move(name)); }

    void send(std::string method, std::string address, std::optional<std::string> body, std::string name) {
        URLRequest request;
        request.url.absoluteString = std::move(address);
        request.method = std::move(method);
        request.timeoutInterval = 8;
        request.body = std::move(body);
        computer().urlSession.dataTask(std::move(request), [this, name](URLReply reply) {
            EXPECT_FALSE(computer().threads.isMainThread());
            std::string line = name;
            if (reply.error) line += " error " + reply.error->localizedDescription;
            if (reply.statusCode) line += " " + std::to_string(*reply.statusCode);
            if (reply.data) line += " " + *reply.data;
            computer().log.print(line);
        });
    }
};

TEST_F(NetworkTest, DeliversTheHandlersAnswerAfterItsLatency) {
    mac().network().setHandler([](const URLRequest& request) {
        EXPECT_EQ("http://h/x", request.url.absoluteString);
        return NetworkAnswer::reply(201, "body", 1.5);
    });
    get("http://h/x");
    mac().runFor(1.4);
    EXPECT_EQ(1U, mac().leftovers().requests);
    EXPECT_EQ(Lines{}, logLines());
    mac().runFor(0.1);
    EXPECT_EQ((Happenings{
                  {NetworkEvent::request, "GET http://h/x"},
                  {NetworkEvent::reply, "http://h/x", {{Field::status, "201"}, {Field::body, "body"}}},
                  {ClientEvent::log, "reply 201 body"},
              }),
              transcript());
    EXPECT_EQ(0U, mac().leftovers().requests);
    EXPECT_EQ(1U, mac().network().sent().size());
}

TEST_F(NetworkTest, RefusesConnectionsWithoutAHandler) {
    get("http://h/x");
    mac().runFor(0);
    EXPECT_EQ(Lines{"reply error Impossibile connettersi al server."}, logLines());
}

TEST_F(NetworkTest, FailsAnAddressWithoutASchemeThatItKnows) {
    mac().network().setHandler([](const URLRequest&) -> NetworkAnswer {
        ADD_FAILURE();
        return {};
    });
    get("server.example/api");
    get("ftp://h/x");
    mac().runFor(0);
    EXPECT_EQ((Lines{"reply error URL non supportato", "reply error URL non supportato"}), logLines());
}

TEST_F(NetworkTest, TimesOut) {
    mac().network().setHandler([](const URLRequest&) { return NetworkAnswer::silence(); });
    get("http://h/x");
    mac().runUntilIdle();
    EXPECT_EQ(8.0, mac().now());
    EXPECT_EQ(Lines{"reply error La richiesta è scaduta."}, logLines());
}

TEST_F(NetworkTest, CallsCompletionsOneAfterAnotherByTheMomentOfTheirArrival) {
    mac().network().setHandler([](const URLRequest& request) {
        return NetworkAnswer::reply(200, "", request.url.absoluteString == "http://h/slow" ? 2 : 1);
    });
    get("http://h/slow", "slow");
    get("http://h/quick", "quick 1");
    get("http://h/quick", "quick 2");
    URLRequest blocking;
    blocking.url.absoluteString = "http://h/quick";
    computer().urlSession.dataTask(blocking, [this](URLReply) { computer().threads.sleep(5); });
    get("http://h/quick", "quick 3");
    mac().runFor(5.9);
    EXPECT_EQ((Lines{"quick 1 200", "quick 2 200"}), logLines());
    mac().runFor(0.1);
    EXPECT_EQ((Lines{"quick 1 200", "quick 2 200", "quick 3 200", "slow 200"}), logLines());
}

TEST_F(NetworkTest, FollowsRedirectsHopByHop) {
    Lines seen;
    mac().network().setHandler([&](const URLRequest& request) {
        seen.push_back(request.method + " " + request.url.absoluteString + " " + request.body.value_or("-"));
        if (seen.size() == 1) return NetworkAnswer::redirect(302, "/two", 1);
        if (seen.size() == 2) return NetworkAnswer::redirect(307, "http://other/three", 1);
        return NetworkAnswer::reply(200, "done", 1);
    });
    send("POST", "http://h/one", "{}", "reply");
    mac().runUntilIdle();
    EXPECT_EQ(3.0, mac().now());
    EXPECT_EQ((Lines{"POST http://h/one {}", "GET http://h/two -", "GET http://other/three -"}), seen);
    EXPECT_EQ((Happenings{
                  {NetworkEvent::request, "POST http://h/one", {{Field::body, "{}"}}},
                  {NetworkEvent::redirect, "GET http://h/two"},
                  {NetworkEvent::redirect, "GET http://other/three"},
                  {NetworkEvent::reply, "http://h/one", {{Field::status, "200"}, {Field::body, "done"}}},
                  {ClientEvent::log, "reply 200 done"},
              }),
              transcript());
}

TEST_F(NetworkTest, GivesUpAfterSixteenRedirects) {
    std::atomic<int> hops = 0;
    mac().network().setHandler([&](const URLRequest&) {
        ++hops;
        return NetworkAnswer::redirect(301, "x");
    });
    get("http://h/");
    mac().runFor(0);
    EXPECT_EQ(17, hops);
    EXPECT_EQ(Lines{"reply error Troppi reindirizzamenti HTTP."}, logLines());
}

TEST_F(NetworkTest, DoesNotLeaveHTTPByARedirect) {
    mac().network().setHandler([](const URLRequest&) { return NetworkAnswer::redirect(301, "ftp://h/"); });
    get("http://h/");
    mac().runFor(0);
    EXPECT_EQ(Lines{"reply error URL non supportato"}, logLines());
}

TEST_F(NetworkTest, RefusesAStatusThatNoServerSends) {
    expectMisuse();
    mac().network().setHandler([](const URLRequest&) { return NetworkAnswer::reply(42, ""); });
    get("http://h/");
    mac().runFor(0);
    EXPECT_EQ(Lines{"an HTTP status of 42"}, expectedMisuse());
}

TEST_F(NetworkTest, ReleasesTheCompletionOnceItHasBeenCalled) {
    const auto owned = std::make_shared<int>();
    URLRequest request;
    request.url.absoluteString = "http://h/";
    computer().urlSession.dataTask(request, [owned](URLReply) {});
    mac().runFor(0);
    EXPECT_EQ(1, owned.use_count());
}

}  // namespace
}  // namespace vantrel::virtualmac
