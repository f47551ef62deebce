#include <gmock/gmock.h>

#include <optional>

#include "server/SessionJoin.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using virtualmac::HTTPAnswer;
using virtualmac::NetworkAnswer;
using virtualmac::NotHTTP;

class SessionJoinTest : public virtualmac::MacTest {
  protected:
    SessionJoinTest() {
        mac().defaults().put("vt_serverURL", "https://server.example");
        mac().network().setHandler([this](const URLRequest& request) {
            return request.url.absoluteString.ends_with("/join") ? joinAnswer : probeAnswer;
        });
    }

    /// Joins on a background thread and waits for its end.
    JoinOutcome join(const std::string& code = "NQRP5D") {
        std::optional<JoinOutcome> outcome;
        const auto& computer = this->computer();
        SessionJoin join(ServerRequests(computer.dispatch, computer.urls, computer.json, computer.urlSession),
                         computer.userDefaults, computer.unicode, computer.log, "2.0-macOS");
        if (tellsOutdated) {
            join.onClientOutdated = [this](const std::string& message, const std::string& url) {
                outdated = message + "|" + url;
            };
        }
        mac().inBackground([&, started = mac().now()] {
            outcome = join.join(code, "Ada Neri", "ada@example.com");
            took = computer.clock.uptime() - started;
        });
        mac().runUntilIdle();
        return outcome.value_or(VantrelError{"never returned"});
    }

    std::string failure(const std::string& code = "NQRP5D") {
        const auto outcome = join(code);
        const auto* error = std::get_if<VantrelError>(&outcome);
        return error != nullptr ? error->message : "joined";
    }

    NetworkAnswer probeAnswer = NetworkAnswer::reply(200, R"({"status":"ACTIVE"})");
    NetworkAnswer joinAnswer =
        NetworkAnswer::reply(200, R"({"meetLink":"L","userToken":"T","sessionTitle":"S","more":[1]})");
    bool tellsOutdated = true;
    std::string outdated = "never";
    double took = 0;
};

TEST_F(SessionJoinTest, HandsBackWhatTheServerGives) {
    EXPECT_EQ(join(), JoinOutcome(JoinResult{"L", "T", "S"}));
    EXPECT_EQ(logLines().back(), "[SESSION] Join OK — S, MeetLink: L");
    EXPECT_EQ(outdated, "never");
}

TEST_F(SessionJoinTest, AsksAndJoinsInTheFormThatTheServerKnows) {
    join("nqrß");
    const auto sent = mac().network().sent();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0].request.method, "GET");
    EXPECT_EQ(sent[0].request.url.absoluteString, "https://server.example/api/sessions/NQRSS");
    EXPECT_EQ(sent[0].request.timeoutInterval, 8);
    EXPECT_THAT(sent[0].request.headers, IsEmpty());
    EXPECT_FALSE(sent[0].request.body);
    EXPECT_EQ(sent[1].request.method, "POST");
    EXPECT_EQ(sent[1].request.url.absoluteString, "https://server.example/api/sessions/NQRSS/join");
    EXPECT_EQ(sent[1].request.timeoutInterval, 8);
    EXPECT_THAT(sent[1].request.headers, ElementsAre(testing::Pair("Content-Type", "application/json")));
    EXPECT_EQ(sent[1].request.body,
              R"({"clientVersion":"2.0-macOS","email":"ada@example.com","fullName":"Ada Neri","platform":"darwin"})");
}

TEST_F(SessionJoinTest, SendsNothingToWhatIsNoURL) {
    EXPECT_EQ(failure("A B"), "URL non valido");
    EXPECT_EQ(failure("à"), "URL non valido");
    EXPECT_THAT(mac().network().sent(), IsEmpty());
}

TEST_F(SessionJoinTest, FindsNoSessionAtAnAddressWithoutAScheme) {
    mac().defaults().put("vt_serverURL", "server.example");
    EXPECT_EQ(failure(), "Codice sessione non trovato");
    EXPECT_THAT(logLines(), ElementsAre("[SESSION] GET error: URL non supportato"));
}

TEST_F(SessionJoinTest, SaysSoWhenOnlyTheJoinAddressIsNoURL) {
    mac().urls().failFormingWhere([](std::string_view text) { return text.ends_with("/join"); });
    EXPECT_EQ(failure(), "URL join non valido");
}

TEST_F(SessionJoinTest, SaysSoWhenTheBodyCannotBeWritten) {
    mac().json().failNext(1);
    EXPECT_EQ(failure(), "Errore serializzazione");
    EXPECT_EQ(mac().network().sent().size(), 1u);
}

TEST_F(SessionJoinTest, FindsNoSessionWithoutAUsableStatus) {
    const std::vector<NetworkAnswer> answers = {
        NetworkAnswer::reply(404, R"({"status":"ACTIVE"})"),
        NetworkAnswer::reply(500, ""),
        NetworkAnswer::reply(201, R"({"status":"ACTIVE"})"),
        NetworkAnswer::reply(200, ""),
        NetworkAnswer::reply(200, "status: ACTIVE"),
        NetworkAnswer::reply(200, R"(["ACTIVE"])"),
        NetworkAnswer::reply(200, R"("ACTIVE")"),
        NetworkAnswer::reply(200, R"({"status":7})"),
        NetworkAnswer::reply(200, R"({"status":true})"),
        NetworkAnswer::reply(200, R"({"status":""})"),
        NetworkAnswer::reply(200, R"({"state":"ACTIVE"})"),
        NetworkAnswer::reply(200, "{\"status\":\"\xFF\"}"),
        NetworkAnswer::failure("Rete assente."),
        NetworkAnswer{0, NotHTTP{"ACTIVE"}},
        NetworkAnswer::silence(),
        NetworkAnswer::stall(200),
    };
    for (const auto& answer : answers) {
        probeAnswer = answer;
        EXPECT_EQ(failure(), "Codice sessione non trovato");
    }
    EXPECT_EQ(mac().network().sent().size(), answers.size());
}

TEST_F(SessionJoinTest, LogsWhatTheProbeCameBackWith) {
    probeAnswer = NetworkAnswer::failure("Rete assente.");
    join();
    probeAnswer = NetworkAnswer{0, NotHTTP{""}};
    join();
    probeAnswer = NetworkAnswer::reply(404, "no");
    join();
    probeAnswer = NetworkAnswer::reply(200, "");
    join();
    probeAnswer = NetworkAnswer::reply(200, "\xC3(");
    join();
    probeAnswer = NetworkAnswer::reply(200, R"( {"status":"ended"} )");
    join();
    EXPECT_THAT(logLines(), ElementsAre("[SESSION] GET error: Rete assente.", "[SESSION] GET: risposta non HTTP",
                                        "[SESSION] GET status HTTP: 404", "[SESSION] GET status HTTP: 200",
                                        "[SESSION] GET status HTTP: 200", "[SESSION] GET body: (non leggibile)",
                                        "[SESSION] GET status HTTP: 200", R"([SESSION] GET body:  {"status":"ended"} )",
                                        "[SESSION] Status parsed: ended"));
}

TEST_F(SessionJoinTest, TakesAStatusOfEndedInAnyCaseAndWithSpacesAround) {
    for (const auto* status : {"ENDED", "ended", " Ended\\t", "\\t ENDED", "\u00A0ended"}) {
        probeAnswer = NetworkAnswer::reply(200, std::string(R"({"status":")") + status + "\"}");
        EXPECT_EQ(failure(), "Questa sessione è già terminata") << status;
    }
    for (const auto* status : {"closed", "ACTIVE", "waiting", "ENDED\\n", "ENDED.", " "}) {
        probeAnswer = NetworkAnswer::reply(200, std::string(R"({"status":")") + status + "\"}");
        EXPECT_EQ(failure(), "joined") << status;
    }
}

TEST_F(SessionJoinTest, TellsATransportFailureOfTheJoin) {
    joinAnswer = NetworkAnswer::failure("Rete assente.");
    EXPECT_EQ(join(), JoinOutcome(VantrelError{"Errore di rete: Rete assente."}));
}

TEST_F(SessionJoinTest, TellsAReplyThatIsNotHTTP) {
    joinAnswer = NetworkAnswer{0, NotHTTP{R"({"meetLink":"L","userToken":"T","sessionTitle":"S"})"}};
    EXPECT_EQ(failure(), "Risposta server non valida");
}

TEST_F(SessionJoinTest, TellsABodyWithoutTheThreeStrings) {
    for (const auto* body :
         {"no", "[]", "{}", R"({"meetLink":"L","userToken":"T"})",
          R"({"meetLink":"L","userToken":"T","sessionTitle":1})", R"({"meetLink":"L","sessionTitle":"S"})",
          R"({"userToken":"T","sessionTitle":"S"})", R"({"meetLink":null,"userToken":"T","sessionTitle":"S"})"}) {
        joinAnswer = NetworkAnswer::reply(200, body);
        EXPECT_EQ(failure(), "Risposta server non valida") << body;
    }
}

TEST_F(SessionJoinTest, TakesThreeEmptyStringsForAnAnswer) {
    joinAnswer = NetworkAnswer::reply(200, R"({"meetLink":"","userToken":"","sessionTitle":""})");
    EXPECT_EQ(join(), JoinOutcome(JoinResult{}));
}

TEST_F(SessionJoinTest, TellsEveryOtherStatusByItsNumber) {
    const std::string good = R"({"meetLink":"L","userToken":"T","sessionTitle":"S"})";
    for (const int status : {201, 204, 400, 401, 403, 404, 410, 500, 503, 999}) {
        joinAnswer = NetworkAnswer::reply(status, good);
        EXPECT_EQ(failure(), "Errore server (HTTP " + std::to_string(status) + ")");
    }
    joinAnswer = NetworkAnswer::reply(200, "");
    EXPECT_EQ(failure(), "Errore server (HTTP 200)");
    for (const auto* body :
         {"", "no", R"({"error":"other"})", R"({"error":["client_outdated"]})", R"(["client_outdated"])"}) {
        joinAnswer = NetworkAnswer::reply(400, body);
        EXPECT_EQ(failure(), "Errore server (HTTP 400)") << body;
    }
    EXPECT_EQ(outdated, "never");
}

TEST_F(SessionJoinTest, HandsOnARefusalOfAnOldClient) {
    const std::string message = "Versione Vantrel non più supportata. Scarica la nuova versione.";
    joinAnswer = NetworkAnswer::reply(400, R"({"error":"client_outdated"})");
    EXPECT_EQ(failure(), message);
    EXPECT_EQ(outdated, "Versione Vantrel non più supportata.|");
    joinAnswer = NetworkAnswer::reply(400, R"({"error":"client_outdated","message":1,"downloadUrl":{}})");
    EXPECT_EQ(failure(), message);
    EXPECT_EQ(outdated, "Versione Vantrel non più supportata.|");
    joinAnswer = NetworkAnswer::reply(400, R"({"error":"client_outdated","message":"M","downloadUrl":"D"})");
    EXPECT_EQ(failure(), message);
    EXPECT_EQ(outdated, "M|D");
    joinAnswer = NetworkAnswer::reply(403, R"({"error":"client_outdated"})");
    EXPECT_EQ(failure(), "Errore server (HTTP 403)");
}

TEST_F(SessionJoinTest, RefusesAnOldClientWithNobodyToTell) {
    tellsOutdated = false;
    joinAnswer = NetworkAnswer::reply(400, R"({"error":"client_outdated"})");
    EXPECT_EQ(failure(), "Versione Vantrel non più supportata. Scarica la nuova versione.");
    EXPECT_EQ(outdated, "never");
}

TEST_F(SessionJoinTest, JoinsWhateverElseA200Says) {
    joinAnswer =
        NetworkAnswer::reply(200, R"({"error":"client_outdated","meetLink":"L","userToken":"T","sessionTitle":"S"})");
    EXPECT_EQ(join(), JoinOutcome(JoinResult{"L", "T", "S"}));
    EXPECT_EQ(outdated, "never");
}

TEST_F(SessionJoinTest, CutsAStallOffByTheTimeOutOfTheExchange) {
    joinAnswer = NetworkAnswer::stall(200);
    EXPECT_EQ(failure(), "Errore di rete: La richiesta è scaduta.");
    EXPECT_NEAR(took, 8, 0.001);
}

TEST_F(SessionJoinTest, DoesNotWaitLongerThanTenSecondsForAReplyThatTrickles) {
    HTTPAnswer slow;
    for (int piece = 0; piece < 4; ++piece) slow.body.push_back({5, " "});
    slow.body.push_back({0, R"({"meetLink":"L","userToken":"T","sessionTitle":"S"})"});
    joinAnswer = NetworkAnswer{0, slow};
    EXPECT_EQ(failure(), "Nessuna risposta dal server");
    EXPECT_NEAR(took, 10, 0.001);
    EXPECT_THAT(logLines(), Not(Contains(StartsWith("[SESSION] Join OK"))));
}

TEST_F(SessionJoinTest, FindsNoSessionWhenTheProbeTakesLongerThanTenSeconds) {
    HTTPAnswer slow;
    for (int piece = 0; piece < 3; ++piece) slow.body.push_back({4, " "});
    slow.body.push_back({0, R"({"status":"ACTIVE"})"});
    probeAnswer = NetworkAnswer{0, slow};
    EXPECT_EQ(failure(), "Codice sessione non trovato");
    EXPECT_NEAR(took, 10, 0.001);
    // A late reply is still logged.
    EXPECT_EQ(logLines().back(), "[SESSION] Status parsed: ACTIVE");
}

TEST_F(SessionJoinTest, SurvivesAnyDepthOfNestingAndAnySizeOfReply) {
    for (const auto& body : {std::string(1 << 20, '['), std::string(16 << 20, 'x'), std::string(300, '{'),
                             std::string(R"({"a":)") + std::string(100000, '[')}) {
        joinAnswer = NetworkAnswer::reply(200, body);
        EXPECT_EQ(failure(), "Risposta server non valida");
    }
}

}  // namespace
}  // namespace vantrel
