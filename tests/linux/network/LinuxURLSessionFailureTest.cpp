#include <atomic>
#include <chrono>
#include <string_view>

#include "tests/linux/network/OneAnswerServer.h"
#include "tests/linux/network/SelfSignedServer.h"
#include "tests/linux/network/URLSessionTest.h"

namespace vantrel::linuxdesktop {
namespace {

using namespace std::chrono_literals;

using LinuxURLSessionFailure = URLSessionTest;

TEST_F(LinuxURLSessionFailure, GivesUpARedirectThatNeverEnds) {
    std::atomic<int> requests = 0;
    server.Get("/loop", [&requests](const httplib::Request&, httplib::Response& response) {
        ++requests;
        response.set_redirect("/loop");
    });
    EXPECT_EQ(errorOf(reply(request(address("/loop")))), "Troppi reindirizzamenti HTTP.");
    EXPECT_EQ(requests, 17);
}

TEST_F(LinuxURLSessionFailure, FailsWhatIsNotHTTPWithTheTextForAnUnsupportedURL) {
    for (const char* url : {"server.example/api", "ftp://server.example/", "file:///etc/hostname", "//server.example/",
                            "data:text/plain,x", "http"}) {
        EXPECT_EQ(errorOf(reply(request(url))), "URL non supportato") << url;
    }
}

TEST_F(LinuxURLSessionFailure, SendsAnAddressOfAMillionBytesAndNoLongerOne) {
    constexpr std::size_t most = 1'000'000;
    const OneAnswerServer server("HTTP/1.1 414 Too Long\r\nContent-Length: 0\r\n\r\n");
    const std::string root = server.address() + "/";
    const std::string longest = root + std::string(most - root.size(), 'x');
    EXPECT_EQ(reply(request(longest)).statusCode, 414);
    EXPECT_NE(server.newestRequest().find(longest.substr(root.size() - 1) + " HTTP/1.1\r\n"), std::string::npos);
    EXPECT_EQ(errorOf(reply(request(longest + "x"))), "URL non valido");
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(LinuxURLSessionFailure, SaysInItalianWhyThereIsNoConnection) {
    EXPECT_EQ(errorOf(reply(request("http://127.0.0.1:1/"))), "Impossibile connettersi al server.");
    EXPECT_EQ(errorOf(reply(request("http://no-such-host.invalid/"))),
              "Impossibile trovare un server con il nome host specificato.");
    EXPECT_EQ(errorOf(reply(request("https://127.0.0.1:" + std::to_string(port) + "/"))),
              "Si è verificato un errore SSL, impossibile stabilire una connessione protetta al server.");
}

TEST_F(LinuxURLSessionFailure, TellsNothingToAServerForWhichNobodyVouches) {
    const SelfSignedServer server;
    EXPECT_EQ(errorOf(reply(request(server.address() + "/api/join"))),
              "Si è verificato un errore SSL, impossibile stabilire una connessione protetta al server.");
    EXPECT_EQ(server.requestCount(), 0);
    // It answers whoever asks for no certificate.
    httplib::SSLClient careless("127.0.0.1", std::stoi(server.address().substr(server.address().rfind(':') + 1)));
    careless.enable_server_certificate_verification(false);
    const auto answer = careless.Get("/");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->body, "secret");
}

TEST_F(LinuxURLSessionFailure, TimesOutWhenNothingComesAndNotBefore) {
    server.Get("/slow", [](const httplib::Request&, httplib::Response&) { std::this_thread::sleep_for(1500ms); });
    URLRequest slow = request(address("/slow"));
    slow.timeoutInterval = 0.5;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(errorOf(reply(slow)), "La richiesta è scaduta.");
    EXPECT_GE(std::chrono::steady_clock::now() - start, 500ms);
}

TEST_F(LinuxURLSessionFailure, CountsIdleTimeOnly) {
    server.Get("/drops", [](const httplib::Request&, httplib::Response& response) {
        // A type that the server does not compress, so it does not hold it back.
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

TEST_F(LinuxURLSessionFailure, CutsAServerOffThatStallsAfterTheHeaders) {
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

TEST_F(LinuxURLSessionFailure, ServesOthersWhileAServersHeadersNeverEnd) {
    server.Get("/healthy", [](const httplib::Request&, httplib::Response& response) {
        response.set_content("well", "text/plain");
    });
    server.Get("/later", [](const httplib::Request&, httplib::Response& response) {
        std::this_thread::sleep_for(900ms);
        response.set_content("late", "text/plain");
    });
    for (const char* answer : {"HTTP/1.1 200 OK\r\nX-Endless: ", "HTTP/1.1 200 OK\r\nX-Many: y\r\n"}) {
        const bool oneLine = answer[std::string_view(answer).size() - 1] == ' ';
        const OneAnswerServer endless(answer, oneLine ? std::string(65536, 'x') : "X-More: y\r\n");
        URLRequest bad = request(endless.address());
        bad.timeoutInterval = 0.5;
        EXPECT_EQ(errorOf(reply(bad)), "La richiesta è scaduta.");
        EXPECT_EQ(reply(request(address("/healthy"))).data, "well");
        // A failing request does not affect the others under way.
        auto late = send(request(address("/later")));
        URLRequest stalled = request(address("/later"));
        stalled.timeoutInterval = 0.1;
        EXPECT_EQ(errorOf(reply(stalled)), "La richiesta è scaduta.");
        EXPECT_EQ(late.get().data, "late");
    }
}

TEST_F(LinuxURLSessionFailure, TakesNoAnnouncedLengthForABodyWhereThereIsNone) {
    const OneAnswerServer noContent("HTTP/1.1 204 No Content\r\nContent-Length: 5\r\n\r\n");
    const OneAnswerServer notModified("HTTP/1.1 304 Not Modified\r\nContent-Length: 5\r\n\r\n");
    EXPECT_EQ(reply(request(noContent.address())).statusCode, 204);
    EXPECT_EQ(reply(request(notModified.address())).statusCode, 304);
}

TEST_F(LinuxURLSessionFailure, TakesAStatusThatIsNoFinalOneForAFailure) {
    for (const char* status : {"000", "-200", "042", "101", "199"}) {
        const OneAnswerServer odd("HTTP/1.1 " + std::string(status) + " Odd\r\nContent-Length: 2\r\n\r\n{}");
        EXPECT_NE(errorOf(reply(request(odd.address()))), "(none)") << status;
    }
}

TEST_F(LinuxURLSessionFailure, NeverTakesEarlyHintsForTheReply) {
    const std::string hint = "HTTP/1.1 103 Early Hints\r\nLink: </a>\r\nLocation: /b\r\n\r\n";
    const OneAnswerServer once(hint + "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
    const OneAnswerServer twice(hint + hint + "HTTP/1.1 308 Permanent Redirect\r\nContent-Length: 2\r\n\r\n{}");
    const OneAnswerServer only(hint);
    EXPECT_EQ(reply(request(once.address())).statusCode, 200);
    EXPECT_EQ(reply(request(once.address())).data, "{}");
    EXPECT_EQ(reply(request(twice.address())).statusCode, 308);
    EXPECT_EQ(errorOf(reply(request(only.address()))), "La connessione di rete è stata persa.");
    EXPECT_EQ(once.requestCount() + twice.requestCount(), 3);
}

TEST_F(LinuxURLSessionFailure, TakesABodyCutShortForALostConnection) {
    const OneAnswerServer byLength("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhello");
    const OneAnswerServer chunked("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n");
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ(errorOf(reply(request(byLength.address()))), "La connessione di rete è stata persa.");
        EXPECT_EQ(errorOf(reply(request(chunked.address()))), "La connessione di rete è stata persa.");
    }
}

TEST_F(LinuxURLSessionFailure, TakesABrokenChunkForAFailureAndNotForTheEndOfTheBody) {
    const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (const char* body :
         {"zz\r\nhello\r\n0\r\n\r\n", "5\r\nhello\r\nzz\r\n0\r\n\r\n", "-1\r\nhello\r\n0\r\n\r\n",
          "5\r\nhello0\r\n\r\n", "fffffffffffffffff\r\nhello\r\n0\r\n\r\n", "\r\nhello\r\n0\r\n\r\n"}) {
        const OneAnswerServer broken(head + body);
        EXPECT_EQ(errorOf(reply(request(broken.address()))), "La connessione di rete è stata persa.") << body;
    }
}

TEST_F(LinuxURLSessionFailure, NeverSendsARequestAgainThatGotNoAnswer) {
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

TEST_F(LinuxURLSessionFailure, AcceptsABodyThatEndsWithTheConnection) {
    const OneAnswerServer plain("HTTP/1.1 200 OK\r\n\r\nhello");
    for (int round = 0; round < 20; ++round) EXPECT_EQ(reply(request(plain.address())).data, "hello");
}

TEST_F(LinuxURLSessionFailure, RefusesABodyOfMoreThan64MiBAndTakesOneOfThatSize) {
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

TEST(LinuxURLSessionShutDown, LeavesAServerWhoseHeadersNeverEnd) {
    const OneAnswerServer endless("HTTP/1.1 200 OK\r\n", "X-More: y\r\n");
    std::atomic<int> completions = 0;
    {
        LinuxURLSession session;
        URLRequest request;
        request.url = URL{endless.address()};
        request.timeoutInterval = 3600;
        session.dataTask(request, [&](const URLReply& reply) {
            EXPECT_TRUE(reply.error);
            ++completions;
        });
        while (endless.requestCount() == 0) std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(completions, 1);
}

TEST(LinuxURLSessionShutDown, FailsWhatIsUnderWayExactlyOnce) {
    std::atomic<int> completions = 0;
    std::string text;
    {
        LinuxURLSession session;
        URLRequest request;
        // A test network address (RFC 5737) that never answers.
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
