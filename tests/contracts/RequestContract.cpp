#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class RequestContract : public ContractTest {
  protected:
    struct Ended {
        URLReply reply;
        double after = 0;
        bool onMain = false;
    };

    static URLRequest request(std::string address) {
        URLRequest made;
        made.url.absoluteString = std::move(address);
        made.timeoutInterval = 20;
        return made;
    }

    /// Sends the request and lets time pass until it has ended.
    Ended send(URLRequest sent) {
        const auto ended = std::make_shared<Ended>();
        const auto done = std::make_shared<std::atomic<int>>(0);
        const double start = now();
        computer().urlSession.dataTask(std::move(sent), [this, ended, done, start](URLReply reply) {
            *ended = {std::move(reply), now() - start, computer().threads.isMainThread()};
            ++*done;
        });
        EXPECT_TRUE(eventually([&] { return *done > 0; }));
        host().letTimePass(0.02);
        EXPECT_EQ(1, *done) << "the completion is called exactly once";
        EXPECT_FALSE(ended->onMain);
        return *ended;
    }

    static ServedAnswer answer(int status, std::string body) {
        ServedAnswer made;
        made.status = status;
        made.body.emplace_back(0, std::move(body));
        return made;
    }

    void expectFailure(const Ended& ended) {
        ASSERT_TRUE(ended.reply.error);
        expectText(*ended.reply.error);
        EXPECT_FALSE(ended.reply.statusCode);
        EXPECT_FALSE(ended.reply.data);
    }
};

TEST_F(RequestContract, CarriesMethodHeadersAndBodyThereAndStatusAndBytesBack) {
    ServedRequest seen;
    const auto base = host().serve([&](const ServedRequest& served) {
        seen = served;
        return answer(201, "sì");
    });
    auto sent = request(base + "/a/b?c=d");
    sent.method = "POST";
    sent.headers = {{"Content-Type", "application/json"}, {"X-Contract", "è"}};
    sent.body = R"({"k":1})";
    const auto ended = send(sent);
    EXPECT_FALSE(ended.reply.error);
    EXPECT_EQ(201, ended.reply.statusCode);
    EXPECT_EQ("sì", ended.reply.data);
    EXPECT_EQ("POST", seen.method);
    EXPECT_EQ("/a/b?c=d", seen.target);
    EXPECT_EQ("application/json", seen.headers["content-type"]);
    EXPECT_EQ(R"({"k":1})", seen.body);
}

TEST_F(RequestContract, AnErrorStatusIsAReply) {
    const auto base =
        host().serve([&](const ServedRequest& served) { return answer(std::stoi(served.target.substr(1)), "body"); });
    for (const int status : {400, 401, 404, 409, 426, 500, 503}) {
        const auto ended = send(request(base + "/" + std::to_string(status)));
        EXPECT_FALSE(ended.reply.error) << status;
        EXPECT_EQ(status, ended.reply.statusCode);
        EXPECT_EQ("body", ended.reply.data);
    }
}

TEST_F(RequestContract, ABodyOfZeroBytesIsNone) {
    const auto base = host().serve([](const ServedRequest&) { return answer(200, ""); });
    const auto ended = send(request(base + "/"));
    EXPECT_EQ(200, ended.reply.statusCode);
    EXPECT_FALSE(ended.reply.error);
    EXPECT_FALSE(ended.reply.data);
}

TEST_F(RequestContract, ARequestsBodyOfZeroBytesIsNone) {
    ServedRequest seen;
    const auto base = host().serve([&](const ServedRequest& served) {
        seen = served;
        return answer(200, "ok");
    });
    auto sent = request(base + "/");
    sent.method = "POST";
    sent.body = "";
    const auto ended = send(sent);
    EXPECT_EQ("ok", ended.reply.data);
    EXPECT_EQ("POST", seen.method);
    EXPECT_EQ("", seen.body);
    EXPECT_FALSE(seen.headers.contains("content-type"));
}

TEST_F(RequestContract, ABodyOfAnyBytesComesAsItIs) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
    const auto base = host().serve([&](const ServedRequest&) { return answer(200, bytes); });
    EXPECT_EQ(bytes, send(request(base + "/")).reply.data);
}

TEST_F(RequestContract, ALargeBodyComesWhole) {
    const std::string bytes(8 * 1024 * 1024, 'x');
    const auto base = host().serve([&](const ServedRequest&) { return answer(200, bytes); });
    const auto ended = send(request(base + "/"));
    ASSERT_TRUE(ended.reply.data);
    EXPECT_TRUE(bytes == *ended.reply.data);
}

TEST_F(RequestContract, ARedirectOf302TurnsPostIntoGet) {
    std::vector<std::string> seen;
    std::mutex mutex;
    const auto base = host().serve([&](const ServedRequest& served) {
        const std::lock_guard guard(mutex);
        seen.push_back(served.method + " " + served.target + " " + served.body);
        if (served.target != "/old") return answer(200, "new");
        ServedAnswer redirect;
        redirect.status = 302;
        redirect.headers.emplace_back("Location", "/new");
        return redirect;
    });
    auto sent = request(base + "/old");
    sent.method = "POST";
    sent.headers = {{"Content-Type", "application/json"}};
    sent.body = "{}";
    const auto ended = send(sent);
    EXPECT_EQ(200, ended.reply.statusCode);
    EXPECT_EQ("new", ended.reply.data);
    EXPECT_EQ((std::vector<std::string>{"POST /old {}", "GET /new "}), seen);
}

TEST_F(RequestContract, TheTargetThatIsSentIsTheAddressesTextFromItsAuthorityToItsFragment) {
    std::string seen;
    const auto base = host().serve([&seen](const ServedRequest& served) {
        seen = served.target;
        return answer(200, "ok");
    });
    for (const char* target :
         {"/", "//", "///", "//a//b///", "/a/../b", "/../a", "/a/..", "/./a/.", "/%41%2fB", "/a%2E%2e/b", "/?", "/?x",
          "/a?b/../c", "/a?b//c", "/a?%41%2fB", "/;a=b;c", "/~a'(b)*"}) {
        EXPECT_EQ("ok", send(request(base + target)).reply.data) << target;
        EXPECT_EQ(target, seen);
        EXPECT_EQ("ok", send(request(base + target + "#fragment?/..")).reply.data) << target;
        EXPECT_EQ(target, seen) << "with a fragment";
    }
}

TEST_F(RequestContract, AnEmptyPathIsSentAsASlash) {
    std::string seen;
    const auto base = host().serve([&seen](const ServedRequest& served) {
        seen = served.target;
        return answer(200, "ok");
    });
    const std::map<std::string, std::string> targets = {
        {"", "/"}, {"?x", "/?x"}, {"?", "/?"}, {"?/../x//", "/?/../x//"}, {"#x", "/"}, {"?x#y", "/?x"}};
    for (const auto& [rest, target] : targets) {
        EXPECT_EQ("ok", send(request(base + rest)).reply.data) << rest;
        EXPECT_EQ(target, seen) << rest;
    }
}

TEST_F(RequestContract, EveryRedirectsStatusWithoutALocationIsAReply) {
    const auto base = host().serve([](const ServedRequest& served) {
        const int status = std::stoi(served.target.substr(1));
        return answer(status, status == 304 ? "" : "body");
    });
    for (int status = 300; status <= 308; ++status) {
        for (const char* method : {"GET", "POST"}) {
            auto sent = request(base + "/" + std::to_string(status));
            sent.method = method;
            if (sent.method == "POST") sent.body = "{}";
            const auto ended = send(sent);
            EXPECT_FALSE(ended.reply.error) << method << " " << status;
            EXPECT_EQ(status, ended.reply.statusCode) << method;
            // That status has no body.
            if (status == 304) continue;
            EXPECT_EQ("body", ended.reply.data) << method << " " << status;
        }
    }
}

TEST_F(RequestContract, ALocationIsFollowedForFiveStatusesOnly) {
    Notes seen;
    std::mutex mutex;
    const auto base = host().serve([&](const ServedRequest& served) {
        const std::lock_guard guard(mutex);
        seen.push_back(served.method + " " + served.target + " " + served.body);
        if (served.target == "/new//a/%41?x") return answer(200, "new");
        ServedAnswer redirect;
        redirect.status = std::stoi(served.target.substr(1));
        redirect.headers.emplace_back("Location", "/new//a/%41?x#y");
        return redirect;
    });
    const auto follows = [](int status) { return status != 300 && (status < 304 || status > 306); };
    for (int status = 300; status <= 308; ++status) {
        seen.clear();
        auto sent = request(base + "/" + std::to_string(status));
        sent.method = "POST";
        sent.body = "{}";
        const auto ended = send(sent);
        EXPECT_FALSE(ended.reply.error) << status;
        EXPECT_EQ(follows(status) ? 200 : status, ended.reply.statusCode);
        Notes expected = {"POST /" + std::to_string(status) + " {}"};
        if (follows(status)) expected.push_back(status < 304 ? "GET /new//a/%41?x " : "POST /new//a/%41?x {}");
        EXPECT_EQ(expected, seen) << status;
    }
}

TEST_F(RequestContract, AServerThatSaysNothingIsCutOff) {
    const auto base = host().serve([](const ServedRequest&) {
        auto late = answer(200, "late");
        late.delay = 3;
        return late;
    });
    auto sent = request(base + "/");
    sent.timeoutInterval = 0.5;
    const auto ended = send(sent);
    expectFailure(ended);
    EXPECT_EQ("La richiesta è scaduta.", ended.reply.error->localizedDescription);
    EXPECT_GE(ended.after, 0.5 - tolerance);
}

TEST_F(RequestContract, AServerThatStallsAfterItsHeadersIsCutOff) {
    const auto base = host().serve([](const ServedRequest&) {
        ServedAnswer stalling;
        stalling.stalls = true;
        return stalling;
    });
    auto sent = request(base + "/");
    sent.timeoutInterval = 0.5;
    const auto ended = send(sent);
    expectFailure(ended);
    EXPECT_GE(ended.after, 0.5 - tolerance);
}

TEST_F(RequestContract, TheTimeOutStartsAnewWheneverBytesArrive) {
    const auto base = host().serve([](const ServedRequest&) {
        ServedAnswer slow;
        for (int piece = 0; piece < 4; ++piece) slow.body.emplace_back(0.4, "x");
        return slow;
    });
    auto sent = request(base + "/");
    sent.timeoutInterval = 1.2;
    const auto ended = send(sent);
    EXPECT_FALSE(ended.reply.error);
    EXPECT_EQ("xxxx", ended.reply.data);
    EXPECT_GE(ended.after, 1.6 - tolerance);
}

TEST_F(RequestContract, ARefusedConnectionFails) {
    expectFailure(send(request(host().refusingAddress() + "/")));
}

TEST_F(RequestContract, AnAddressWithoutASchemeFailsWithThePlatformsText) {
    for (const char* address : {"server.example/api", "localhost:3000/api", "server.azienda.it:8787/api/sessions/ABC",
                                "ftp://server.example/"}) {
        const auto ended = send(request(address));
        expectFailure(ended);
        EXPECT_EQ("URL non supportato", ended.reply.error->localizedDescription) << address;
    }
}

TEST_F(RequestContract, AnAddressThatWasNeverFormedFailsAsAnyOther) {
    for (const char* address : {"http://a b/", "http://server.example/%zz", "", "\xff"}) {
        URLRequest sent = request(address);
        expectFailure(send(sent));
        // Also from the main thread, which must not be told while it asks.
        host().onMain([&] {
            computer().urlSession.dataTask(std::move(sent), [this](const URLReply& reply) {
                note(std::string(reply.error ? "failed" : "answered") +
                     (computer().threads.isMainThread() ? " on the main thread" : ""));
            });
        });
    }
    ASSERT_TRUE(noted(4));
    EXPECT_EQ(notes(), (Notes{"failed", "failed", "failed", "failed"}));
}

TEST_F(RequestContract, CompletionsComeOneAfterAnother) {
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::atomic<int> ended = 0;
    const auto base = host().serve([](const ServedRequest&) { return answer(200, "x"); });
    for (int index = 0; index < 4; ++index) {
        computer().urlSession.dataTask(request(base + "/" + std::to_string(index)), [&](URLReply) {
            most = std::max(most.load(), ++running);
            computer().threads.sleep(0.03);
            --running;
            ++ended;
        });
    }
    ASSERT_TRUE(eventually([&] { return ended == 4; }));
    EXPECT_EQ(1, most);
}

}  // namespace
}  // namespace vantrel::contracts
