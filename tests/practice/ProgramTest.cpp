#include <gtest/gtest.h>
#include <httplib.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>
#include <vector>

#include "PracticeProgram.h"
#include "RawConnection.h"
#include "Requests.h"

namespace vantrel::practice::test {
namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Long enough that only a hang reaches it.
constexpr int patience = 60;

class Program : public testing::Test {
  protected:
    void SetUp() override { ASSERT_GT(port, 0); }

    httplib::Client client() const {
        httplib::Client client("127.0.0.1", port);
        client.set_read_timeout(patience);
        return client;
    }

    void changeReply(const nlohmann::json& rule) const {
        const auto reply = client().Post("/control/reply-rule", rule.dump(), "application/json");
        ASSERT_TRUE(reply);
        ASSERT_EQ(reply->status, 200) << reply->body;
    }

    nlohmann::json received() const {
        const auto reply = client().Get("/control/received");
        return reply ? nlohmann::json::parse(reply->body) : nlohmann::json();
    }

    /// Waits until this many exchanges have been received.
    void awaitReceived(std::size_t count) const {
        while (received().size() < count) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }

    PracticeProgram program{
        {"--port", "0", "--session", "PROVA=Sicurezza <b>", "--session", "due", "--status", "DUE=ENDED"}};
    int port = program.port();
};

TEST_F(Program, PrintsAddressAndSessions) {
    EXPECT_EQ(program.line(), "Session PROVA (ACTIVE): Sicurezza <b>");
    EXPECT_EQ(program.line(), "Session DUE (ENDED): Lezione di prova");
    program.closeStandardInput();
    EXPECT_FALSE(program.line().has_value());
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST_F(Program, CarriesAWholeSession) {
    const auto probe = client().Get("/api/sessions/PROVA");
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->status, 200);
    EXPECT_EQ(probe->get_header_value("Content-Type"), "application/json");

    const auto join = client().Post("/api/sessions/PROVA/join", joinBody().dump(), "application/json");
    ASSERT_TRUE(join);
    const nlohmann::json joined = nlohmann::json::parse(join->body);
    const std::string base = "http://127.0.0.1:" + std::to_string(port);
    EXPECT_EQ(joined["meetLink"], base + "/meet/PROVA");
    EXPECT_EQ(joined["sessionTitle"], "Sicurezza <b>");

    const auto page = client().Get("/meet/PROVA");
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=utf-8");
    EXPECT_NE(page->body.find("Sicurezza &lt;b&gt;"), std::string::npos);

    const std::string body = heartbeatBody("prova", joined["userToken"]).dump();
    const auto first = client().Post("/api/heartbeat", body, "application/json");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->body, R"({"sessionEnded":false})");
    const auto end = client().Post("/control/end/PROVA");
    ASSERT_TRUE(end);
    EXPECT_EQ(end->status, 200);
    const auto second = client().Post("/api/heartbeat", body, "application/json");
    ASSERT_TRUE(second);
    EXPECT_EQ(second->body, R"({"sessionEnded":true})");

    const nlohmann::json list = received();
    ASSERT_EQ(list.size(), 5U);
    EXPECT_EQ(list[1]["method"], "POST");
    EXPECT_EQ(list[1]["path"], "/api/sessions/PROVA/join");
    EXPECT_EQ(nlohmann::json::parse(list[1]["body"].get<std::string>()), joinBody());
    const auto hasHeader = [&](const std::string& name) {
        return std::any_of(list[1]["headers"].begin(), list[1]["headers"].end(),
                           [&](const nlohmann::json& header) { return header[0] == name; });
    };
    EXPECT_TRUE(hasHeader("Content-Type"));
    EXPECT_FALSE(hasHeader("REMOTE_ADDR"));
    for (const nlohmann::json& exchange : list) EXPECT_EQ(exchange["delivered"], true);
}

TEST_F(Program, TakesPathsAsTheyAreSent) {
    const auto reply = client().Get("//api/sessions/PROVA?a=%20");
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 404);
    EXPECT_EQ(received()[0]["path"], "//api/sessions/PROVA?a=%20");
}

TEST_F(Program, TakesBodiesOfAnyBytesAndAnyType) {
    const std::string bytes("\0\xFF\xFE", 3);
    EXPECT_TRUE(client().Post("/api/heartbeat", bytes, "application/octet-stream"));
    const std::string form(100000, 'a');
    EXPECT_TRUE(client().Post("/api/heartbeat", form, "application/x-www-form-urlencoded"));
    EXPECT_EQ(received()[0]["bodyBase64"], "AP/+");
    EXPECT_EQ(received()[1]["body"], form);
}

TEST_F(Program, SilentConnectionsHoldUpNobody) {
    std::vector<RawConnection> silent;
    silent.reserve(100);
    for (int count = 0; count < 100; ++count) silent.emplace_back(port);
    const auto reply = client().Get("/api/sessions/PROVA");
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 200);
    for (const RawConnection& connection : silent) EXPECT_TRUE(connection.isOpen());
}

TEST_F(Program, IgnoresARange) {
    const auto reply = client().Get("/api/sessions/PROVA", httplib::Headers{{"Range", "bytes=0-3"}});
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 200);
    EXPECT_EQ(nlohmann::json::parse(reply->body)["code"], "PROVA");
}

TEST_F(Program, RefusesAMultipartBodyAsAnyOther) {
    const auto reply = client().Post("/api/heartbeat", httplib::MultipartFormDataItems{{"a", "1", "", ""}});
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 400);
    EXPECT_EQ(nlohmann::json::parse(reply->body)["error"], "invalid_body");
}

TEST_F(Program, RefusesABodyOverOneMebibyte) {
    const auto reply = client().Post("/api/heartbeat", std::string(2000000, '['), "application/json");
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 413);
}

TEST_F(Program, NamesTheAllowedMethod) {
    const auto reply = client().Put("/api/heartbeat", "{}", "application/json");
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 405);
    EXPECT_EQ(reply->get_header_value("Allow"), "POST");
    const auto head = client().Head("/api/sessions/PROVA");
    ASSERT_TRUE(head);
    EXPECT_EQ(head->status, 405);
}

TEST_F(Program, DelaysAReply) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"delaySeconds", 0.75}});
    const auto start = Clock::now();
    const auto reply = client().Get("/api/sessions/PROVA");
    EXPECT_GE(secondsSince(start), 0.75);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, 200);
    EXPECT_EQ(received()[0]["delivered"], true);
}

TEST_F(Program, LetsADelayedReplyHoldUpNoOther) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"delaySeconds", 3000}});
    std::vector<std::thread> delayed;
    constexpr std::size_t count = 20;
    delayed.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        delayed.emplace_back([&] { EXPECT_FALSE(client().Get("/api/sessions/PROVA")); });
    }
    awaitReceived(count);
    const auto other = client().Get("/api/sessions/DUE");
    EXPECT_EQ(other ? other->status : 0, 200);
    const nlohmann::json list = received();
    for (std::size_t index = 0; index < count; ++index) EXPECT_EQ(list[index]["delivered"], false);
    program.signal(SIGTERM);
    for (std::thread& thread : delayed) thread.join();
}

TEST_F(Program, DropsAConnectionWithoutAByte) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"dropConnection", true}, {"times", 1}});
    httplib::Client raw("127.0.0.1", port);
    raw.set_read_timeout(patience);
    const auto reply = raw.Get("/api/sessions/PROVA");
    ASSERT_FALSE(reply);
    EXPECT_EQ(reply.error(), httplib::Error::Read);
    const nlohmann::json list = received();
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]["status"], 0);
    EXPECT_EQ(list[0]["delivered"], false);
    const auto again = client().Get("/api/sessions/PROVA");
    ASSERT_TRUE(again);
    EXPECT_EQ(again->status, 200);
}

TEST_F(Program, StallsAfterTheHeaders) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"stallAfterHeaders", true}, {"status", 201}});
    std::atomic<int> status{0};
    std::atomic<std::size_t> length{0};
    std::atomic<std::size_t> arrived{0};
    std::thread stalled([&] {
        EXPECT_FALSE(client().Get(
            "/api/sessions/PROVA",
            [&](const httplib::Response& response) {
                length = std::stoul(response.get_header_value("Content-Length"));
                status = response.status;
                return true;
            },
            [&](const char*, std::size_t count) {
                arrived += count;
                return true;
            }));
    });
    while (status == 0) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(status, 201);
    EXPECT_GT(length, 0U);
    EXPECT_EQ(received()[0]["delivered"], false);
    program.signal(SIGTERM);
    EXPECT_EQ(program.exitStatus(), 0);
    stalled.join();
    EXPECT_EQ(arrived, 0U);
}

TEST_F(Program, FreesThePlacesOfClientsThatHangUp) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"delaySeconds", 3000}});
    changeReply({{"path", "/api/sessions/DUE"}, {"stallAfterHeaders", true}});
    // More than there are places.
    for (int round = 0; round < 5; ++round) {
        std::vector<std::thread> clients;
        clients.reserve(8);
        for (int number = 0; number < 8; ++number) {
            clients.emplace_back([&, number] {
                httplib::Client impatient("127.0.0.1", port);
                impatient.set_read_timeout(0, 200000);
                EXPECT_FALSE(impatient.Get(number % 2 == 0 ? "/api/sessions/PROVA" : "/api/sessions/DUE"));
            });
        }
        for (std::thread& thread : clients) thread.join();
    }
    awaitReceived(40);
    const nlohmann::json list = received();
    EXPECT_EQ(list.size(), 40U);
    for (const nlohmann::json& exchange : list) EXPECT_EQ(exchange["delivered"], false);
}

TEST_F(Program, SendsTheLargestBody) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"bodySize", ReplyRule::largestBody}, {"body", "0123456"}});
    const auto reply = client().Get("/api/sessions/PROVA");
    ASSERT_TRUE(reply);
    ASSERT_EQ(reply->body.size(), ReplyRule::largestBody);
    EXPECT_EQ(reply->body.substr(0, 9), "012345601");
    EXPECT_EQ(reply->body.back(), static_cast<char>('0' + (ReplyRule::largestBody - 1) % 7));
    EXPECT_EQ(received()[0]["delivered"], true);
}

TEST_F(Program, SendsAnEmptyBodyAndARedirect) {
    changeReply({{"path", "/api/empty"}, {"status", 503}, {"body", ""}});
    const auto empty = client().Get("/api/empty");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->status, 503);
    EXPECT_EQ(empty->body, "");
    EXPECT_EQ(empty->get_header_value("Content-Length"), "0");
    changeReply({{"path", "/api/old"}, {"location", "/api/sessions/PROVA"}});
    const auto redirect = client().Get("/api/old");
    ASSERT_TRUE(redirect);
    EXPECT_EQ(redirect->status, 302);
    EXPECT_EQ(redirect->get_header_value("Location"), "/api/sessions/PROVA");
}

TEST_F(Program, EndsOnASignalWhileRepliesAreOutstanding) {
    changeReply({{"path", "/api/sessions/PROVA"}, {"delaySeconds", 3000}});
    changeReply({{"path", "/api/sessions/DUE"}, {"stallAfterHeaders", true}});
    std::thread delayed([&] { EXPECT_FALSE(client().Get("/api/sessions/PROVA")); });
    std::thread stalled([&] { EXPECT_FALSE(client().Get("/api/sessions/DUE")); });
    awaitReceived(2);
    program.signal(SIGTERM);
    EXPECT_EQ(program.exitStatus(), 0);
    delayed.join();
    stalled.join();
}

TEST_F(Program, EndsOnAnInterrupt) {
    program.signal(SIGINT);
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST_F(Program, SaysThatItsPortIsTaken) {
    PracticeProgram second({"--port", std::to_string(port)});
    EXPECT_EQ(second.exitStatus(), 1);
    EXPECT_EQ(second.errors(), "vantrel-practice: port " + std::to_string(port) + " on 127.0.0.1 is taken\n");
    EXPECT_FALSE(second.line().has_value());
    EXPECT_TRUE(client().Get("/api/sessions/PROVA"));
}

TEST(ProgramStart, EndsByItselfAfterItsTime) {
    const auto start = Clock::now();
    PracticeProgram program({"--port", "0", "--for", "0.3"});
    EXPECT_EQ(program.exitStatus(), 0);
    EXPECT_GE(secondsSince(start), 0.3);
}

TEST(ProgramStart, OffersASessionWhereNoneIsAskedFor) {
    PracticeProgram program({"--port", "0"});
    EXPECT_GT(program.port(), 0);
    EXPECT_EQ(program.line(), "Session PROVA (ACTIVE): Lezione di prova");
}

TEST(ProgramStart, ReadsAFile) {
    PracticeProgram program({"--port", "0", "--config", VANTREL_PRACTICE_CLASSES, "--session", "ALTRA"});
    EXPECT_GT(program.port(), 0);
    EXPECT_EQ(program.line(), "Session PROVA (ACTIVE): Sicurezza sul lavoro, modulo 1");
    EXPECT_EQ(program.line(), "Session ATTESA-2 (WAITING): Sicurezza sul lavoro, modulo 2");
    EXPECT_EQ(program.line(), "Session CHIUSA (ENDED): Antincendio");
    EXPECT_EQ(program.line(), "Session FUORI (ACTIVE): Primo soccorso");
    EXPECT_EQ(program.line(), "Session ALTRA (ACTIVE): Lezione di prova");
}

TEST(ProgramStart, SaysWhatIsWrongWithAFile) {
    const std::string path = testing::TempDir() + "vantrel-practice-wrong-" + std::to_string(getpid()) + ".yaml";
    std::ofstream(path) << "sessions:\n  - code: A\n    colour: red\n";
    PracticeProgram program({"--port", "0", "--config", path});
    EXPECT_EQ(program.exitStatus(), 2);
    EXPECT_EQ(program.errors(), path + ":3: unknown key 'colour' in a session\n");
    EXPECT_FALSE(program.line().has_value());
    std::remove(path.c_str());
}

TEST(ProgramStart, SaysWhatIsWrongWithItsOptions) {
    PracticeProgram unknown({"--colour"});
    EXPECT_EQ(unknown.exitStatus(), 2);
    EXPECT_EQ(unknown.errors(), "vantrel-practice: unknown option '--colour'\nTry 'vantrel-practice --help'.\n");
    PracticeProgram twice({"--session", "A", "--session", "a"});
    EXPECT_EQ(twice.exitStatus(), 2);
    EXPECT_EQ(twice.errors(), "vantrel-practice: there are two sessions A\n");
    PracticeProgram nobody({"--status", "A=ENDED"});
    EXPECT_EQ(nobody.exitStatus(), 2);
    EXPECT_EQ(nobody.errors(), "vantrel-practice: --status: there is no session A\n");
}

/// A file with a password in its first line, for one test.
class PasswordFile {
  public:
    explicit PasswordFile(const std::string& content) { std::ofstream(path) << content; }
    ~PasswordFile() { std::remove(path.c_str()); }
    PasswordFile(const PasswordFile&) = delete;
    PasswordFile& operator=(const PasswordFile&) = delete;

    /// Its own in each process: tests run side by side.
    const std::string path = testing::TempDir() + "vantrel-practice-password-" + std::to_string(getpid());
};

TEST(ProgramStart, DoesNotShowTheTrainersPageToOthersWithoutAPassword) {
    for (const std::string address : {"0.0.0.0", "192.168.1.20", "::"}) {
        PracticeProgram program({"--port", "0", "--listen", address});
        EXPECT_EQ(program.exitStatus(), 2) << address;
        EXPECT_EQ(program.errors(), "vantrel-practice: --listen " + address +
                                        ": others can reach the trainer's page there; give it a password with "
                                        "--password-file\nTry 'vantrel-practice --help'.\n");
    }
}

TEST(ProgramStart, ListensWhereItIsToldAndAsksForThePassword) {
    const PasswordFile file("segretissimo\r\nnot this\n");
    PracticeProgram program({"--port", "0", "--listen", "127.0.0.2", "--password-file", file.path});
    const std::string line = program.line().value_or("");
    const std::string beginning = "Practice server on http://127.0.0.2:";
    ASSERT_EQ(line.rfind(beginning, 0), 0U) << line;
    httplib::Client client("127.0.0.2", static_cast<int>(std::strtol(line.c_str() + beginning.size(), nullptr, 10)));
    client.set_read_timeout(patience);
    const auto status = [](const httplib::Result& reply) { return reply ? reply->status : 0; };
    EXPECT_EQ(status(client.Get("/api/sessions/PROVA")), 200);
    EXPECT_EQ(status(client.Get("/trainer/state")), 401);
    client.set_basic_auth("trainer", "segretissimo");
    EXPECT_EQ(status(client.Get("/trainer/state")), 200);
    const auto start = Clock::now();
    client.set_basic_auth("trainer", "segreto");
    EXPECT_EQ(status(client.Get("/trainer/state")), 401);
    EXPECT_GE(secondsSince(start), 1);
}

TEST(ProgramStart, SaysWhatIsWrongWithAPassword) {
    const PasswordFile file("breve\nsegretissimo\n");
    PracticeProgram shorter({"--password-file", file.path});
    EXPECT_EQ(shorter.exitStatus(), 2);
    EXPECT_EQ(shorter.errors(), "vantrel-practice: " + file.path + ": the password is shorter than 8 bytes\n");
    PracticeProgram missing({"--password-file", file.path + ".none"});
    EXPECT_EQ(missing.exitStatus(), 2);
    EXPECT_EQ(missing.errors(), "vantrel-practice: " + file.path + ".none: the file cannot be read, or is empty\n");
}

TEST(ProgramStart, ShowsItsHelp) {
    PracticeProgram program({"--help"});
    EXPECT_EQ(program.line(), "Usage: vantrel-practice [OPTION]...");
    EXPECT_EQ(program.exitStatus(), 0);
}

}  // namespace
}  // namespace vantrel::practice::test
