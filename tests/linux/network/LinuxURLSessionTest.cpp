#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <utility>

#include "tests/linux/network/OneAnswerServer.h"
#include "tests/linux/network/URLSessionTest.h"

namespace vantrel::linuxdesktop {
namespace {

using namespace std::chrono_literals;

using LinuxURLSession = URLSessionTest;

TEST_F(LinuxURLSession, SendsMethodHeadersAndBodyAsTheyStand) {
    server.Post("/join", [](const httplib::Request& request, httplib::Response& response) {
        response.set_content(request.method + "|" + request.get_header_value("Content-Type") + "|" + request.body +
                                 "|" + request.version,
                             "text/plain");
    });
    URLRequest post = request(address("/join"), "POST");
    post.headers = {{"Content-Type", "application/json"}};
    post.body = "{\"a\":\"è\"}";
    const URLReply answer = reply(post);
    EXPECT_FALSE(answer.error);
    EXPECT_EQ(answer.statusCode, 200);
    EXPECT_EQ(answer.data, "POST|application/json|{\"a\":\"è\"}|HTTP/1.1");
}

TEST_F(LinuxURLSession, BeginsARequestWithTheAddressesOwnText) {
    const OneAnswerServer plain("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
    const std::pair<const char*, const char*> targets[] = {
        {"", "/"}, {"?x", "/?x"}, {"#x", "/"}, {"//a/../%41%2fB/.?b?c/..#d?e", "//a/../%41%2fB/.?b?c/.."}};
    for (const auto& [rest, target] : targets) {
        EXPECT_EQ(reply(request(plain.address() + rest)).statusCode, 200) << rest;
        const std::string sent = plain.newestRequest();
        EXPECT_EQ(sent.substr(0, sent.find('\n') + 1), std::string("GET ") + target + " HTTP/1.1\r\n");
    }
}

TEST_F(LinuxURLSession, AddsNoFieldToARequestThatSaysWhatIsInIt) {
    const OneAnswerServer plain("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
    const std::string host = plain.address().substr(std::string("http://").size());
    const std::string usual = "Host: " + host + "\r\nAccept: */*\r\nAccept-Encoding: gzip, deflate\r\n";
    EXPECT_EQ(reply(request(plain.address())).statusCode, 200);
    EXPECT_EQ(plain.newestRequest(), "GET / HTTP/1.1\r\n" + usual + "\r\n");
    EXPECT_EQ(reply(request(plain.address(), "POST")).statusCode, 200);
    EXPECT_EQ(plain.newestRequest(), "POST / HTTP/1.1\r\n" + usual + "Content-Length: 0\r\n\r\n");
}

TEST_F(LinuxURLSession, FollowsALocationAsItIsWrittenButForWhatNoAddressHas) {
    server.Get(".*", [](const httplib::Request& request, httplib::Response& response) {
        if (request.target != "/") return response.set_content(request.target, "text/plain");
        response.status = 302;
        response.set_header("Location", "/due//parole più %41/?a b#c");
    });
    EXPECT_EQ(reply(request(address("/"))).data, "/due//parole%20pi%C3%B9%20%41/?a%20b");
}

TEST_F(LinuxURLSession, TreatsEveryStatusAsAReply) {
    server.Get(R"(/status/(\d+))", [](const httplib::Request& request, httplib::Response& response) {
        response.status = std::stoi(request.matches[1]);
        response.set_content("body of " + std::to_string(response.status), "text/plain");
    });
    for (const int status : {200, 201, 400, 401, 403, 404, 407, 409, 410, 418, 429, 500, 501, 503, 599}) {
        const URLReply answer = reply(request(address("/status/" + std::to_string(status))));
        EXPECT_FALSE(answer.error) << status;
        EXPECT_EQ(answer.statusCode, status);
        EXPECT_EQ(answer.data, "body of " + std::to_string(status));
    }
}

TEST_F(LinuxURLSession, TreatsAnEmptyBodyAsNone) {
    server.Get("/empty", [](const httplib::Request&, httplib::Response&) {});
    const URLReply answer = reply(request(address("/empty")));
    EXPECT_EQ(answer.statusCode, 200);
    EXPECT_EQ(answer.data, std::nullopt);
    EXPECT_FALSE(answer.error);
}

TEST_F(LinuxURLSession, HandsAnyBytesOver) {
    const std::string bytes("\xff\0\x80{\n", 5);
    server.Get("/bytes", [bytes](const httplib::Request&, httplib::Response& response) {
        response.set_content(bytes, "application/json");
    });
    EXPECT_EQ(reply(request(address("/bytes"))).data, bytes);
}

TEST_F(LinuxURLSession, FollowsRedirectsTurningPostIntoGetForThreeStatuses) {
    server.Get("/target", [](const httplib::Request& request, httplib::Response& response) {
        response.set_content("GET " + request.get_header_value("Content-Type") + request.body, "text/plain");
    });
    server.Post("/target", [](const httplib::Request& request, httplib::Response& response) {
        response.set_content("POST " + request.body, "text/plain");
    });
    server.Post(R"(/redirect/(\d+))", [](const httplib::Request& request, httplib::Response& response) {
        response.status = std::stoi(request.matches[1]);
        response.set_header("Location", "/target");
        response.set_content("not this", "text/plain");
    });
    for (const int status : {301, 302, 303, 307, 308}) {
        URLRequest post = request(address("/redirect/" + std::to_string(status)), "POST");
        post.headers = {{"Content-Type", "application/json"}};
        post.body = "{}";
        const URLReply answer = reply(post);
        EXPECT_EQ(answer.statusCode, 200) << status;
        EXPECT_EQ(answer.data, status <= 303 ? "GET " : "POST {}") << status;
    }
}

TEST_F(LinuxURLSession, KeepsNoCookiesAndNoCache) {
    server.Get("/counted", [count = 0](const httplib::Request& request, httplib::Response& response) mutable {
        response.set_header("Set-Cookie", "id=1");
        response.set_header("Cache-Control", "max-age=3600");
        response.set_content(std::to_string(++count) + request.get_header_value("Cookie"), "text/plain");
    });
    EXPECT_EQ(reply(request(address("/counted"))).data, "1");
    EXPECT_EQ(reply(request(address("/counted"))).data, "2");
}

TEST_F(LinuxURLSession, CompletesOneAfterAnotherOffTheCallingThread) {
    server.Get("/",
               [](const httplib::Request&, httplib::Response& response) { response.set_content("x", "text/plain"); });
    std::mutex running;
    std::atomic<int> overlaps = 0;
    std::atomic<int> completed = 0;
    std::promise<void> all;
    for (int i = 0; i < 8; ++i) {
        session.dataTask(request(address("/")), [&](const URLReply&) {
            if (!running.try_lock()) {
                ++overlaps;
            } else {
                std::this_thread::sleep_for(10ms);
                running.unlock();
            }
            if (++completed == 8) all.set_value();
        });
    }
    all.get_future().get();
    EXPECT_EQ(overlaps, 0);
}

TEST_F(LinuxURLSession, GoesOnWhileACompletionWaits) {
    server.Get("/",
               [](const httplib::Request&, httplib::Response& response) { response.set_content("x", "text/plain"); });
    std::promise<void> release;
    std::promise<void> entered;
    session.dataTask(request(address("/")), [&](const URLReply&) {
        entered.set_value();
        release.get_future().get();
    });
    entered.get_future().get();
    URLRequest second = request(address("/"));
    second.timeoutInterval = 0.5;
    auto reply = send(second);
    std::this_thread::sleep_for(1s);
    release.set_value();
    EXPECT_EQ(reply.get().data, "x");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
