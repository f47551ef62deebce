#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

#include "RawConnection.h"
#include "Requests.h"
#include "practice/program/HttpFront.h"

namespace vantrel::practice::test {
namespace {

using namespace std::chrono_literals;

const std::string host = "Host: 127.0.0.1:8787\r\n";
const std::string probe = "GET /api/sessions/PROVA HTTP/1.1\r\n" + host + "\r\n";

std::string postWith(const std::string& path, const std::string& headers, const std::string& body) {
    return "POST " + path + " HTTP/1.1\r\n" + host + headers + "\r\n" + body;
}

/// The limits of connections and their effect on others. Runs in this process, so that the limits can be small.
class Front : public testing::Test {
  protected:
    void listen(HttpLimits limits) {
        front.emplace(server, limits);
        port = front->listen("127.0.0.1", 0).value_or(0);
        ASSERT_GT(port, 0);
    }

    std::string answerTo(const std::string& request) const {
        const RawConnection connection(port);
        EXPECT_TRUE(connection.send(request));
        return connection.readAll();
    }

    static bool isSuccess(const std::string& reply) { return reply.rfind("HTTP/1.1 200 ", 0) == 0; }

    void changeReply(const std::string& rule) {
        ASSERT_EQ(server.handle(post("/control/reply-rule", rule)).status, 200);
    }

    void awaitReceived(std::size_t count) const {
        while (server.received().size() < count) std::this_thread::sleep_for(2ms);
    }

    PracticeServer server{fourSessions(), [] { return standingTime; }};
    std::optional<HttpFront> front;
    int port = 0;
};

TEST_F(Front, SilentConnectionsHoldUpNobody) {
    listen({});
    std::vector<RawConnection> silent;
    silent.reserve(200);
    for (int count = 0; count < 200; ++count) silent.emplace_back(port);
    for (const RawConnection& connection : silent) ASSERT_TRUE(connection.send("POST /api/heart"));
    EXPECT_TRUE(isSuccess(answerTo(probe)));
    for (const RawConnection& connection : silent) EXPECT_TRUE(connection.isOpen());
}

TEST_F(Front, ARequestHasATimeInAllHoweverOftenAByteComes) {
    HttpLimits limits;
    limits.requestTime = 300ms;
    listen(limits);
    for (const std::string& beginning :
         {probe.substr(0, 10), postWith("/api/heartbeat", "Content-Length: 100000\r\n", "{")}) {
        const RawConnection connection(port);
        ASSERT_TRUE(connection.send(beginning));
        while (connection.isOpen()) {
            connection.send("a");
            std::this_thread::sleep_for(20ms);
        }
    }
    EXPECT_TRUE(server.received().empty());
    EXPECT_TRUE(isSuccess(answerTo(probe)));
}

TEST_F(Front, TheRequestsTimeDoesNotCutADelayedReply) {
    HttpLimits limits;
    limits.requestTime = 50ms;
    limits.replyTime = 200ms;
    listen(limits);
    changeReply(R"({"path":"/api/sessions/PROVA","delaySeconds":0.5})");
    EXPECT_TRUE(isSuccess(answerTo(probe)));
    EXPECT_TRUE(server.received()[0].delivered);
}

TEST_F(Front, AReplyHasATimeInAllWhenItsReaderIsSlow) {
    HttpLimits limits;
    limits.replyTime = 300ms;
    listen(limits);
    changeReply(R"({"path":"/api/sessions/PROVA","bodySize":67108864})");
    const RawConnection connection(port);
    ASSERT_TRUE(connection.send(probe));
    awaitReceived(1);
    while (server.received()[0].delivered) std::this_thread::sleep_for(5ms);
    EXPECT_LT(connection.readAll().size(), 67108864U);
}

TEST_F(Front, WhenAllPlacesAreTakenTheOneAwaitedLongestMakesPlace) {
    HttpLimits limits;
    limits.connections = 4;
    listen(limits);
    std::vector<RawConnection> silent;
    for (int count = 0; count < 4; ++count) {
        silent.emplace_back(port);
        // One after the other, so that the first one has waited longest.
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_TRUE(isSuccess(answerTo(probe)));
    EXPECT_EQ(silent[0].readAll(), "");
    for (int count = 0; count < 20; ++count) EXPECT_TRUE(isSuccess(answerTo(probe)));
    EXPECT_TRUE(silent[3].isOpen());
}

TEST_F(Front, AConnectionWhoseReplyIsDelayedKeepsItsPlace) {
    HttpLimits limits;
    limits.connections = 2;
    listen(limits);
    changeReply(R"({"path":"/api/sessions/PROVA","delaySeconds":3000,"times":2})");
    RawConnection first(port);
    const RawConnection second(port);
    ASSERT_TRUE(first.send(probe));
    ASSERT_TRUE(second.send(probe));
    awaitReceived(2);
    // Another one is accepted and answered, or waits until a place is free. It ends no other.
    std::thread third([&] { EXPECT_TRUE(isSuccess(answerTo(probe))); });
    std::this_thread::sleep_for(50ms);
    EXPECT_TRUE(second.isOpen());
    first.close();
    third.join();
    EXPECT_TRUE(second.isOpen());
}

TEST_F(Front, ABodyThatIsAnnouncedTooLongIsRefusedBeforeItComes) {
    listen({});
    const std::string reply = answerTo(postWith("/api/heartbeat", "Content-Length: 1048577\r\n", ""));
    EXPECT_EQ(reply.rfind("HTTP/1.1 413 ", 0), 0U) << reply;
    EXPECT_NE(reply.find("body_too_large"), std::string::npos);
    ASSERT_EQ(server.received().size(), 1U);
    EXPECT_EQ(server.received()[0].status, 413);
    EXPECT_EQ(server.received()[0].request.path, "/api/heartbeat");
    EXPECT_EQ(server.received()[0].request.header("Host"), "127.0.0.1:8787");
}

TEST_F(Front, ABodyOfManyPiecesIsRefusedWhenItHasBecomeTooLong) {
    listen({});
    const RawConnection connection(port);
    ASSERT_TRUE(connection.send(postWith("/api/heartbeat", "Transfer-Encoding: chunked\r\n", "")));
    const std::string piece = "10000\r\n" + std::string(65536, '[') + "\r\n";
    for (int count = 0; count < 32; ++count) connection.send(piece);
    EXPECT_EQ(connection.readAll().rfind("HTTP/1.1 413 ", 0), 0U);
    ASSERT_EQ(server.received().size(), 1U);
    EXPECT_EQ(server.received()[0].request.body, "");
}

TEST_F(Front, WhoSendsATooLongBodyInOneGoStillReadsTheRefusal) {
    listen({});
    const std::string body(std::size_t{4} * 1024 * 1024, '[');
    const RawConnection connection(port);
    connection.send(postWith("/api/heartbeat", "Content-Length: " + std::to_string(body.size()) + "\r\n", body));
    EXPECT_EQ(connection.readAll().rfind("HTTP/1.1 413 ", 0), 0U);
}

TEST_F(Front, ABodyOfOneMebibyteIsTaken) {
    listen({});
    const std::string body(std::size_t{1024} * 1024, 'x');
    const std::string length = "Content-Length: " + std::to_string(body.size()) + "\r\n";
    EXPECT_EQ(answerTo(postWith("/api/heartbeat", length, body)).rfind("HTTP/1.1 400 ", 0), 0U);
    EXPECT_EQ(server.received()[0].request.body, body);
}

TEST_F(Front, WhoAsksWhetherToGoOnIsTold) {
    listen({});
    const std::string headers = "Expect: 100-continue\r\nContent-Length: 2\r\n";
    const std::string reply = answerTo(postWith("/api/heartbeat", headers, "{}"));
    EXPECT_EQ(reply.rfind("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 400 ", 0), 0U) << reply;
    EXPECT_EQ(server.received()[0].request.body, "{}");
    const std::string tooLong = "Expect: 100-continue\r\nContent-Length: 2000000\r\n";
    EXPECT_EQ(answerTo(postWith("/api/heartbeat", tooLong, "")).rfind("HTTP/1.1 413 ", 0), 0U);
}

TEST_F(Front, AMultipartBodyGetsTheOrdinaryRefusalAndIsKept) {
    listen({});
    const std::string body = "--x\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\n1\r\n--x--\r\n";
    const std::string headers =
        "Content-Type: multipart/form-data; boundary=x\r\nContent-Length: " + std::to_string(body.size()) + "\r\n";
    const std::string reply = answerTo(postWith("/api/heartbeat", headers, body));
    EXPECT_EQ(reply.rfind("HTTP/1.1 400 ", 0), 0U) << reply;
    EXPECT_NE(reply.find(R"({"error":"invalid_body","message":"the body is not JSON"})"), std::string::npos);
    EXPECT_EQ(server.received()[0].request.body, body);
}

TEST_F(Front, ARangeIsIgnoredWhole) {
    listen({});
    const std::string whole = answerTo(probe);
    ASSERT_TRUE(isSuccess(whole));
    for (const std::string range : {"bytes=0-3", "bytes=5-", "bytes=-1", "bytes=900-999", "bytes=3-1", "x", ""}) {
        std::string request = "GET /api/sessions/PROVA HTTP/1.1\r\n";
        request.append(host).append("Range: ").append(range).append("\r\n\r\n");
        EXPECT_EQ(answerTo(request), whole) << range;
    }
}

TEST_F(Front, WhatIsNoHttpIsRefusedAndNotRecorded) {
    listen({});
    for (const std::string bytes : {"GARBAGE\r\n\r\n", "GET / HTTP/1.1\r\nno colon\r\n\r\n", "\x16\x03\x01\x02\r\n\r\n",
                                    "POST / HTTP/1.1\r\nContent-Length: x\r\n\r\n"}) {
        EXPECT_EQ(answerTo(bytes).rfind("HTTP/1.1 400 ", 0), 0U) << bytes;
    }
    const std::string headers(20000, 'a');
    EXPECT_EQ(answerTo("GET / HTTP/1.1\r\nX: " + headers + "\r\n\r\n").rfind("HTTP/1.1 431 ", 0), 0U);
    EXPECT_TRUE(server.received().empty());
    EXPECT_TRUE(isSuccess(answerTo(probe)));
}

TEST_F(Front, AHeaderOfAReplyRuleCannotBringOthersAlong) {
    listen({});
    changeReply(
        R"({"path":"/api/sessions/PROVA","status":302,"location":"/a\r\nX-Other: 1","contentType":"a\nX-Third: 1"})");
    const std::string reply = answerTo(probe);
    EXPECT_EQ(reply.rfind("HTTP/1.1 302 ", 0), 0U) << reply;
    EXPECT_EQ(reply.find("X-"), std::string::npos) << reply;
}

TEST_F(Front, RepliesThatHaveNoBodyCanBeBentToHaveOne) {
    listen({});
    for (const int status : {204, 304, 299, 599}) {
        server.reset();
        changeReply(R"({"path":"/api/sessions/PROVA","body":"x","status":)" + std::to_string(status) + "}");
        const std::string reply = answerTo(probe);
        EXPECT_EQ(reply.rfind("HTTP/1.1 " + std::to_string(status) + " ", 0), 0U) << reply;
        EXPECT_NE(reply.find("Content-Length: 1\r\n"), std::string::npos) << reply;
    }
}

TEST_F(Front, EndsWhileConnectionsAreInEveryState) {
    listen({});
    changeReply(R"({"path":"/api/sessions/PROVA","delaySeconds":3000})");
    changeReply(R"({"path":"/api/sessions/ATTESA","stallAfterHeaders":true})");
    changeReply(R"({"path":"/api/sessions/CHIUSA","bodySize":67108864})");
    std::vector<RawConnection> connections;
    for (const std::string& request :
         {probe, "GET /api/sessions/ATTESA HTTP/1.1\r\n" + host + "\r\n",
          "GET /api/sessions/CHIUSA HTTP/1.1\r\n" + host + "\r\n", std::string("GET"), std::string()}) {
        connections.emplace_back(port);
        ASSERT_TRUE(connections.back().send(request));
    }
    awaitReceived(3);
    front.reset();
    for (const RawConnection& connection : connections) connection.readAll();
    EXPECT_FALSE(server.received()[0].delivered);
}

TEST_F(Front, DoesNotListenWhereItCannot) {
    listen({});
    HttpFront second(server);
    EXPECT_FALSE(second.listen("127.0.0.1", port).has_value());
    HttpFront elsewhere(server);
    EXPECT_FALSE(elsewhere.listen("192.0.2.1", 0).has_value());
    HttpFront nowhere(server);
    EXPECT_FALSE(nowhere.listen("somewhere", 0).has_value());
}

}  // namespace
}  // namespace vantrel::practice::test
