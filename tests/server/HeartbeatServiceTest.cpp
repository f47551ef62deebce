#include <gmock/gmock.h>

#include <atomic>
#include <map>
#include <thread>

#include "server/HeartbeatService.h"
#include "tests/doubles/SingleThreadComputer.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using virtualmac::NetworkAnswer;

class HeartbeatServiceTest : public virtualmac::MacTest {
  protected:
    HeartbeatServiceTest() {
        mac().network().setHandler([this](const URLRequest&) { return answer; });
    }

    std::weak_ptr<HeartbeatService> make(const std::string& base = "https://server.example") {
        const auto& c = computer();
        auto weak = makeOnMain<HeartbeatService>(HeartbeatService::Identity{base, "nqrp5d", "T", "2.0-macOS"},
                                                 ServerRequests(c.dispatch, c.urls, c.json, c.urlSession), c.dispatch,
                                                 c.mainRunLoop, c.clock, c.dates, c.log);
        mac().onMain([&] {
            weak.lock()->lockdownActive = true;
            weak.lock()->meetConnected = true;
            weak.lock()->onSessionEnded = [this] { ++ended; };
        });
        return weak;
    }

    void start(const std::weak_ptr<HeartbeatService>& service) {
        mac().onMain([&] { service.lock()->start(); });
    }
    void stop(const std::weak_ptr<HeartbeatService>& service) {
        mac().onMain([&] { service.lock()->stop(); });
    }
    void add(const std::weak_ptr<HeartbeatService>& service, const std::string& type, const std::string& detail) {
        mac().onMain([&] { service.lock()->addViolation(type, detail); });
    }

    std::vector<std::string> bodies() {
        std::vector<std::string> found;
        for (const auto& sent : mac().network().sent()) found.push_back(sent.request.body.value_or(""));
        return found;
    }

    NetworkAnswer answer = NetworkAnswer::reply(200, R"({"sessionEnded":false})");
    int ended = 0;
};

TEST_F(HeartbeatServiceTest, SendsTheFirstAtOnceAndOneEveryFifteenSeconds) {
    start(make());
    mac().runFor(46);
    std::vector<double> times;
    for (const auto& sent : mac().network().sent()) times.push_back(sent.time);
    EXPECT_THAT(times, ElementsAre(0, 15, 30, 45));
    EXPECT_THAT(logLines(), ElementsAre("[HEARTBEAT] Avviato (ogni 15s) → https://server.example"));
}

TEST_F(HeartbeatServiceTest, SendsTheNineKeys) {
    start(make());
    mac().runFor(0);
    const auto sent = mac().network().sent();
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_EQ(sent[0].request.method, "POST");
    EXPECT_EQ(sent[0].request.url.absoluteString, "https://server.example/api/heartbeat");
    EXPECT_EQ(sent[0].request.timeoutInterval, 10);
    EXPECT_THAT(sent[0].request.headers, ElementsAre(testing::Pair("Content-Type", "application/json")));
    EXPECT_EQ(sent[0].request.body,
              R"({"clientVersion":"2.0-macOS","disconnecting":false,"lockdownActive":true,"meetConnected":true,)"
              R"("platform":"darwin","sessionCode":"nqrp5d","timestamp":"2026-03-02T08:00:00Z","userToken":"T",)"
              R"("violations":[]})");
}

TEST_F(HeartbeatServiceTest, SendsViolationsOnceInTheirOrder) {
    const auto service = make();
    start(service);
    mac().runFor(1);
    add(service, "KEY_BLOCKED", "Cmd+Q");
    mac().runFor(2);
    add(service, "FOCUS_VIOLATION", "Note");
    mac().runFor(30);
    ASSERT_THAT(bodies(), SizeIs(3));
    EXPECT_THAT(bodies()[1],
                HasSubstr(R"("violations":[{"at":"2026-03-02T08:00:01Z","detail":"Cmd+Q","type":"KEY_BLOCKED"},)"
                          R"({"at":"2026-03-02T08:00:03Z","detail":"Note","type":"FOCUS_VIOLATION"}])"));
    EXPECT_THAT(bodies()[2], HasSubstr(R"("violations":[])"));
}

TEST_F(HeartbeatServiceTest, LosesTheViolationsOfAHeartbeatThatFails) {
    const auto service = make();
    start(service);
    add(service, "KEY_BLOCKED", "Cmd+Q");
    answer = NetworkAnswer::failure("Rete assente.");
    mac().runFor(40);
    EXPECT_THAT(bodies()[1], HasSubstr("Cmd+Q"));
    EXPECT_THAT(bodies()[2], testing::Not(HasSubstr("Cmd+Q")));
}

TEST_F(HeartbeatServiceTest, DropsTheViolationsOfABodyThatCannotBeWritten) {
    const auto service = make();
    start(service);
    add(service, "KEY_BLOCKED", "Cmd+Q");
    mac().json().failNext(1);
    mac().runFor(31);
    EXPECT_THAT(bodies(), SizeIs(2));
    EXPECT_THAT(bodies()[1], HasSubstr(R"("violations":[])"));
}

TEST_F(HeartbeatServiceTest, KeepsViolationsWhileTheAddressIsNoURL) {
    const auto service = make("https://a b");
    start(service);
    add(service, "KEY_BLOCKED", "Cmd+Q");
    mac().runFor(60);
    EXPECT_THAT(bodies(), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre("[HEARTBEAT] Avviato (ogni 15s) → https://a b"));
}

TEST_F(HeartbeatServiceTest, HasTwoUnderWayWithASlowServer) {
    answer = NetworkAnswer::reply(200, "", 9.5);
    const auto service = make();
    start(service);
    mac().runFor(15.5);
    EXPECT_EQ(mac().network().underWay(), 1u);
    virtualmac::HTTPAnswer trickle;
    for (int piece = 0; piece < 4; ++piece) trickle.body.push_back({9, " "});
    answer = NetworkAnswer{0, trickle};
    mac().runFor(30.5);
    EXPECT_EQ(mac().network().underWay(), 2u);
    EXPECT_THAT(bodies(), SizeIs(4));
}

TEST_F(HeartbeatServiceTest, EndsTheSessionOnlyForTheBooleanTrue) {
    const auto service = make();
    for (const auto* body : {"", "true", "[true]", "{}", R"({"sessionEnded":false})", R"({"sessionEnded":"true"})",
                             R"({"sessionEnded":1})", R"({"sessionEnded":null})", R"([{"sessionEnded":true}])"}) {
        answer = NetworkAnswer::reply(200, body);
        start(service);
        mac().runFor(1);
        stop(service);
        EXPECT_EQ(ended, 0) << body;
    }
    answer = NetworkAnswer::reply(500, R"({"sessionEnded":true})");
    start(service);
    mac().runFor(1);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(logLines().back(), "[HEARTBEAT] Sessione terminata dal backend");
}

TEST_F(HeartbeatServiceTest, SurvivesNineteenFailuresAndAReply) {
    const auto service = make();
    answer = NetworkAnswer::failure("Rete assente.");
    start(service);
    mac().runFor(18 * 15 + 1);
    EXPECT_EQ(logLines().back(), "[HEARTBEAT] Errore (19/20): Rete assente.");
    answer = NetworkAnswer::reply(503, "");
    mac().runFor(15);
    answer = NetworkAnswer::failure("Rete assente.");
    mac().runFor(15);
    EXPECT_EQ(logLines().back(), "[HEARTBEAT] Errore (1/20): Rete assente.");
    EXPECT_EQ(ended, 0);
}

TEST_F(HeartbeatServiceTest, EndsTheSessionAtTheTwentiethFailureAndAtEveryFurtherOne) {
    const auto service = make();
    answer = NetworkAnswer::failure("Rete assente.");
    start(service);
    mac().runFor(19 * 15 + 1);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(logLines().back(), "[HEARTBEAT] Troppi errori — fine sessione");
    mac().runFor(15);
    EXPECT_EQ(ended, 2);
    EXPECT_THAT(logLines(), Contains("[HEARTBEAT] Errore (21/20): Rete assente."));
    mac().runFor(30);
    EXPECT_EQ(ended, 4);
    stop(service);
    mac().runFor(60);
    EXPECT_EQ(ended, 4);
}

TEST_F(HeartbeatServiceTest, EndsNothingWithoutACallback) {
    const auto service = make();
    mac().onMain([&] { service.lock()->onSessionEnded = nullptr; });
    answer = NetworkAnswer::reply(200, R"({"sessionEnded":true})");
    start(service);
    mac().runFor(1);
    EXPECT_EQ(logLines().back(), "[HEARTBEAT] Sessione terminata dal backend");
    EXPECT_EQ(ended, 0);
}

TEST_F(HeartbeatServiceTest, CountsAnewAfterAStart) {
    const auto service = make();
    answer = NetworkAnswer::failure("Rete assente.");
    start(service);
    mac().runFor(31);
    stop(service);
    start(service);
    mac().runFor(1);
    EXPECT_EQ(logLines().back(), "[HEARTBEAT] Errore (1/20): Rete assente.");
}

TEST_F(HeartbeatServiceTest, IsRunningBetweenItsStartAndItsStop) {
    const auto service = make();
    EXPECT_FALSE(service.lock()->isRunning());
    start(service);
    EXPECT_TRUE(service.lock()->isRunning());
    stop(service);
    EXPECT_FALSE(service.lock()->isRunning());
}

TEST_F(HeartbeatServiceTest, SaysThatNothingIsActiveUntilItIsTold) {
    const auto& c = computer();
    const auto service = makeOnMain<HeartbeatService>(
        HeartbeatService::Identity{"https://server.example", "nqrp5d", "T", "2.0-macOS"},
        ServerRequests(c.dispatch, c.urls, c.json, c.urlSession), c.dispatch, c.mainRunLoop, c.clock, c.dates, c.log);
    start(service);
    mac().runFor(1);
    ASSERT_THAT(bodies(), SizeIs(1));
    EXPECT_THAT(bodies()[0], HasSubstr(R"("lockdownActive":false,"meetConnected":false)"));
}

TEST_F(HeartbeatServiceTest, StartsAndStopsOnce) {
    const auto service = make();
    stop(service);
    EXPECT_THAT(logLines(), IsEmpty());
    start(service);
    start(service);
    mac().runFor(1);
    EXPECT_THAT(bodies(), SizeIs(1));
    stop(service);
    stop(service);
    mac().runFor(60);
    EXPECT_THAT(bodies(), SizeIs(1));
    EXPECT_THAT(logLines(),
                ElementsAre("[HEARTBEAT] Avviato (ogni 15s) → https://server.example", "[HEARTBEAT] Fermato"));
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(HeartbeatServiceTest, HearsAReplyThatComesAfterTheStop) {
    answer = NetworkAnswer::reply(200, R"({"sessionEnded":true})", 5);
    const auto service = make();
    start(service);
    mac().runFor(1);
    stop(service);
    mac().runFor(10);
    EXPECT_EQ(ended, 1);
}

TEST_F(HeartbeatServiceTest, IgnoresAReplyThatComesAfterItIsGone) {
    answer = NetworkAnswer::failure("Rete assente.", 5);
    const auto service = make();
    start(service);
    mac().runFor(1);
    dropOnMain();
    EXPECT_TRUE(service.expired());
    mac().runFor(60);
    EXPECT_EQ(ended, 0);
    EXPECT_THAT(bodies(), SizeIs(1));
    EXPECT_THAT(logLines(), SizeIs(1));
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(HeartbeatServiceTest, SendsTheDisconnectNoticeWithoutTheQueuedViolations) {
    const auto service = make();
    add(service, "KEY_BLOCKED", "Cmd+Q");
    mac().onMain([&] { service.lock()->sendDisconnect(SessionEndReason::browserCrashed); });
    ASSERT_THAT(bodies(), SizeIs(1));
    EXPECT_EQ(mac().network().sent()[0].request.timeoutInterval, 5);
    EXPECT_EQ(bodies()[0],
              R"({"clientVersion":"2.0-macOS","disconnecting":true,"lockdownActive":false,"meetConnected":false,)"
              R"("platform":"darwin","sessionCode":"nqrp5d","timestamp":"2026-03-02T08:00:00Z","userToken":"T",)"
              R"("violations":[]})");
    EXPECT_THAT(logLines(), ElementsAre("[HEARTBEAT] Disconnessione inviata: Il browser si è chiuso inaspettatamente"));
    start(service);
    mac().runFor(0);
    EXPECT_THAT(bodies()[1], HasSubstr("Cmd+Q"));
}

TEST_F(HeartbeatServiceTest, BlocksFiveSecondsForAServerThatNeverAnswers) {
    answer = NetworkAnswer::silence();
    const auto service = make();
    double back = 0;
    mac().onMain([&] {
        service.lock()->sendDisconnect(SessionEndReason::userRequest);
        back = mac().now();
    });
    EXPECT_EQ(back, 5);
    EXPECT_THAT(logLines(), ElementsAre("[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente"));
}

TEST_F(HeartbeatServiceTest, LogsNothingOfANoticeThatCannotBeMade) {
    const auto service = make();
    mac().json().failNext(1);
    mac().onMain([&] { service.lock()->sendDisconnect(SessionEndReason::userRequest); });
    const auto nowhere = make("https://a b");
    mac().onMain([&] { nowhere.lock()->sendDisconnect(SessionEndReason::userRequest); });
    EXPECT_THAT(bodies(), IsEmpty());
    EXPECT_THAT(logLines(), IsEmpty());
}

/// Log lines, and what is posted to the main queue, in order.
struct Order : Log, DispatchQueue, Dispatch, RunLoop {
    void print(std::string_view line) override { happened.emplace_back(line); }
    void async(Block) override { happened.emplace_back("posted"); }
    void asyncAfter(double, Block) override {}
    DispatchQueue& mainQueue() override { return *this; }
    DispatchQueue& userInitiatedQueue() override { return *this; }
    std::shared_ptr<Semaphore> makeSemaphore(int) override { return nullptr; }
    std::shared_ptr<DispatchGroup> makeGroup() override { return nullptr; }
    std::unique_ptr<Timer> scheduledTimer(double, bool, Block block) override {
        tick = std::move(block);
        return nullptr;
    }

    std::vector<std::string> happened;
    Block tick;
};

/// What the service says and posts with these replies, one a heartbeat.
std::vector<std::string> orderWith(const URLReply& reply, int heartbeats) {
    Order order;
    singlethread::SingleThreadComputer computer;
    computer.session.replies = {reply};
    const auto service =
        std::make_shared<HeartbeatService>(HeartbeatService::Identity{"https://server.example", "C", "T", "V"},
                                           computer.requests(), order, order, computer.clock, computer.dates, order);
    service->start();
    for (int more = 1; more < heartbeats; ++more) order.tick();
    return order.happened;
}

TEST(HeartbeatService, LogsTheServersEndBeforeTheMainThreadMayActOnIt) {
    URLReply reply;
    reply.statusCode = 200;
    reply.data = R"({"sessionEnded":true})";
    EXPECT_THAT(orderWith(reply, 1), ElementsAre("[HEARTBEAT] Avviato (ogni 15s) → https://server.example",
                                                 "[HEARTBEAT] Sessione terminata dal backend", "posted"));
}

TEST(HeartbeatService, LogsTooManyErrorsBeforeTheMainThreadMayActOnThem) {
    URLReply reply;
    reply.error = PlatformError{"no"};
    const auto happened = orderWith(reply, 20);
    ASSERT_THAT(happened, SizeIs(23));
    EXPECT_EQ(happened[20], "[HEARTBEAT] Errore (20/20): no");
    EXPECT_EQ(happened[21], "[HEARTBEAT] Troppi errori — fine sessione");
    EXPECT_EQ(happened[22], "posted");
}

/// Eight threads add violations while the main thread drains: none is lost, none is sent twice, and each thread's stay
/// in order.
TEST(HeartbeatService, TakesViolationsFromManyThreadsWhileTheyAreDrained) {
    // Fewer without the baton, for ThreadSanitizer.
    const int each = (virtualmac::isFreeRunning() ? 100'000 : 1'000'000) / 8;
    constexpr int threads = 8;
    singlethread::SingleThreadComputer computer;
    std::vector<std::string> bodies;
    computer.session.onRequest = [&bodies](const URLRequest& request) { bodies.push_back(request.body.value()); };
    const auto service = std::make_shared<HeartbeatService>(
        HeartbeatService::Identity{"https://server.example", "C", "T", "V"}, computer.requests(), computer.dispatch,
        computer.runLoop, computer.clock, computer.dates, computer.log);
    std::vector<std::thread> writers;
    std::atomic<int> writing = threads;
    for (int writer = 0; writer < threads; ++writer) {
        writers.emplace_back([&service, &writing, writer, each] {
            for (int index = 0; index < each; ++index) {
                service->addViolation(std::to_string(writer), std::to_string(index));
            }
            --writing;
        });
    }
    while (writing > 0) {
        service->start();
        service->stop();
    }
    service->start();
    service->stop();
    for (auto& writer : writers) writer.join();

    std::map<std::string, int, std::less<>> next;
    const std::string_view detail = R"("detail":")";
    const std::string_view type = R"(","type":")";
    for (const auto& body : bodies) {
        for (auto at = body.find(detail); at != std::string::npos; at = body.find(detail, at)) {
            at += detail.size();
            const auto end = body.find(type, at);
            ASSERT_NE(end, std::string::npos);
            auto& count = next[body.substr(end + type.size(), 1)];
            ASSERT_EQ(std::string_view(body).substr(at, end - at), std::to_string(count++));
        }
    }
    ASSERT_THAT(next, SizeIs(threads));
    for (const auto& [writer, count] : next) EXPECT_EQ(count, each) << writer;
}

}  // namespace
}  // namespace vantrel
