#include <gtest/gtest.h>
#include <httplib.h>

#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

#include "OneAnswerServer.h"
#include "platform/linux/LinuxURLSession.h"

namespace vantrel::linuxdesktop {
namespace {

using namespace std::chrono_literals;

class LinuxURLSessionTest : public testing::Test {
  protected:
    void SetUp() override {
        server.set_keep_alive_timeout(1);
        port = server.bind_to_any_port("127.0.0.1");
        thread = std::thread([this] { server.listen_after_bind(); });
    }

    void TearDown() override {
        while (!server.is_running()) std::this_thread::sleep_for(1ms);
        server.stop();
        thread.join();
    }

    std::string address(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port) + path; }

    static URLRequest request(const std::string& address, const std::string& method = "GET") {
        URLRequest made;
        made.url = URL{address};
        made.method = method;
        made.timeoutInterval = 5;
        return made;
    }

    std::future<URLReply> send(const URLRequest& request) {
        auto promise = std::make_shared<std::promise<URLReply>>();
        // A second completion would end the process: a promise is kept once.
        session.dataTask(request, [promise](URLReply reply) { promise->set_value(std::move(reply)); });
        return promise->get_future();
    }

    URLReply reply(const URLRequest& request) { return send(request).get(); }

    static std::string errorOf(const URLReply& reply) {
        EXPECT_EQ(reply.statusCode, std::nullopt);
        EXPECT_EQ(reply.data, std::nullopt);
        return reply.error ? reply.error->localizedDescription : "(none)";
    }

    httplib::Server server;
    int port = 0;
    std::thread thread;
    LinuxURLSession session;
};

TEST_F(LinuxURLSessionTest, SendsMethodHeadersAndBodyAsTheyStand) {
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

TEST_F(LinuxURLSessionTest, TreatsEveryStatusAsAReply) {
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

TEST_F(LinuxURLSessionTest, TreatsAnEmptyBodyAsNone) {
    server.Get("/empty", [](const httplib::Request&, httplib::Response&) {});
    const URLReply answer = reply(request(address("/empty")));
    EXPECT_EQ(answer.statusCode, 200);
    EXPECT_EQ(answer.data, std::nullopt);
    EXPECT_FALSE(answer.error);
}

TEST_F(LinuxURLSessionTest, HandsAnyBytesOver) {
    const std::string bytes("\xff\0\x80{\n", 5);
    server.Get("/bytes", [bytes](const httplib::Request&, httplib::Response& response) {
        response.set_content(bytes, "application/json");
    });
    EXPECT_EQ(reply(request(address("/bytes"))).data, bytes);
}

TEST_F(LinuxURLSessionTest, FollowsRedirectsTurningPostIntoGetForThreeStatuses) {
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

TEST_F(LinuxURLSessionTest, GivesUpARedirectThatNeverEnds) {
    std::atomic<int> requests = 0;
    server.Get("/loop", [&requests](const httplib::Request&, httplib::Response& response) {
        ++requests;
        response.set_redirect("/loop");
    });
    EXPECT_EQ(errorOf(reply(request(address("/loop")))), "Troppi reindirizzamenti HTTP.");
    EXPECT_EQ(requests, 17);
}

TEST_F(LinuxURLSessionTest, FailsWhatIsNotHTTPWithTheTextForAnUnsupportedURL) {
    for (const char* url : {"server.example/api", "ftp://server.example/", "file:///etc/hostname", "//server.example/",
                            "data:text/plain,x", "http"}) {
        EXPECT_EQ(errorOf(reply(request(url))), "URL non supportato") << url;
    }
}

TEST_F(LinuxURLSessionTest, SaysInItalianWhyThereIsNoConnection) {
    EXPECT_EQ(errorOf(reply(request("http://127.0.0.1:1/"))), "Impossibile connettersi al server.");
    EXPECT_EQ(errorOf(reply(request("http://no-such-host.invalid/"))),
              "Impossibile trovare un server con il nome host specificato.");
    EXPECT_EQ(errorOf(reply(request("https://127.0.0.1:" + std::to_string(port) + "/"))),
              "Si è verificato un errore SSL, impossibile stabilire una connessione protetta al server.");
}

TEST_F(LinuxURLSessionTest, TimesOutWhenNothingComesAndNotBefore) {
    server.Get("/slow", [](const httplib::Request&, httplib::Response&) { std::this_thread::sleep_for(1500ms); });
    URLRequest slow = request(address("/slow"));
    slow.timeoutInterval = 0.5;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(errorOf(reply(slow)), "La richiesta è scaduta.");
    EXPECT_GE(std::chrono::steady_clock::now() - start, 450ms);
}

TEST_F(LinuxURLSessionTest, CountsIdleTimeOnly) {
    server.Get("/drops", [](const httplib::Request&, httplib::Response& response) {
        // A type that the server does not compress, and so does not hold back.
        response.set_chunked_content_provider("application/octet-stream", [](std::size_t, httplib::DataSink& sink) {
            for (int piece = 0; piece < 6; ++piece) {
                std::this_thread::sleep_for(200ms);
                if (!sink.write("x", 1)) return false;
            }
            sink.done();
            return true;
        });
    });
    URLRequest drops = request(address("/drops"));
    drops.timeoutInterval = 0.8;
    EXPECT_EQ(reply(drops).data, "xxxxxx");
}

TEST_F(LinuxURLSessionTest, CutsAServerOffThatStallsAfterTheHeaders) {
    server.Get("/stall", [](const httplib::Request&, httplib::Response& response) {
        response.set_content_provider(100, "text/plain", [](std::size_t, std::size_t, httplib::DataSink& sink) {
            sink.write("begun", 5);
            std::this_thread::sleep_for(1500ms);
            return false;
        });
    });
    URLRequest stall = request(address("/stall"));
    stall.timeoutInterval = 0.4;
    EXPECT_EQ(errorOf(reply(stall)), "La richiesta è scaduta.");
}

TEST_F(LinuxURLSessionTest, TakesABodyCutShortForALostConnection) {
    const OneAnswerServer byLength("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhello");
    const OneAnswerServer chunked("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n");
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ(errorOf(reply(request(byLength.address()))), "La connessione di rete è stata persa.");
        EXPECT_EQ(errorOf(reply(request(chunked.address()))), "La connessione di rete è stata persa.");
    }
}

TEST_F(LinuxURLSessionTest, NeverSendsARequestAgainThatGotNoAnswer) {
    const OneAnswerServer silent("");
    const OneAnswerServer halfAStatus("HTTP/1.1 20");
    for (const OneAnswerServer* server : {&silent, &halfAStatus}) {
        URLRequest post = request(server->address(), "POST");
        post.body = "{}";
        EXPECT_EQ(errorOf(reply(post)), "La connessione di rete è stata persa.");
        EXPECT_EQ(errorOf(reply(request(server->address()))), "La connessione di rete è stata persa.");
        EXPECT_EQ(server->requestCount(), 2);
    }
}

TEST_F(LinuxURLSessionTest, AcceptsABodyThatEndsWithTheConnection) {
    const OneAnswerServer plain("HTTP/1.1 200 OK\r\n\r\nhello");
    for (int round = 0; round < 20; ++round) EXPECT_EQ(reply(request(plain.address())).data, "hello");
}

TEST_F(LinuxURLSessionTest, RefusesABodyOfMoreThan64MiBAndTakesOneOfThatSize) {
    server.Get(R"(/bytes/(\d+))", [](const httplib::Request& request, httplib::Response& response) {
        response.set_content(std::string(std::stoull(request.matches[1]), 'x'), "text/plain");
    });
    constexpr std::size_t most = std::size_t{64} << 20;
    URLRequest largest = request(address("/bytes/" + std::to_string(most)));
    largest.timeoutInterval = 30;
    const URLReply answer = reply(largest);
    ASSERT_TRUE(answer.data);
    EXPECT_EQ(answer.data->size(), most);
    URLRequest tooLarge = request(address("/bytes/" + std::to_string(most + 1)));
    tooLarge.timeoutInterval = 30;
    EXPECT_EQ(errorOf(reply(tooLarge)), "La risposta del server è troppo grande.");
}

TEST_F(LinuxURLSessionTest, KeepsNoCookiesAndNoCache) {
    server.Get("/counted", [count = 0](const httplib::Request& request, httplib::Response& response) mutable {
        response.set_header("Set-Cookie", "id=1");
        response.set_header("Cache-Control", "max-age=3600");
        response.set_content(std::to_string(++count) + request.get_header_value("Cookie"), "text/plain");
    });
    EXPECT_EQ(reply(request(address("/counted"))).data, "1");
    EXPECT_EQ(reply(request(address("/counted"))).data, "2");
}

TEST_F(LinuxURLSessionTest, CompletesOneAfterAnotherOffTheCallingThread) {
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

TEST_F(LinuxURLSessionTest, GoesOnWhileACompletionWaits) {
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

TEST(LinuxURLSessionShutDown, FailsWhatIsUnderWayExactlyOnce) {
    std::atomic<int> completions = 0;
    std::string text;
    {
        LinuxURLSession session;
        URLRequest request;
        // A test network address (RFC 5737): nothing answers there.
        request.url = URL{"http://192.0.2.1/"};
        session.dataTask(request, [&](const URLReply& reply) {
            ++completions;
            if (reply.error) text = reply.error->localizedDescription;
        });
    }
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(text.empty());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
