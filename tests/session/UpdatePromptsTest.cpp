#include <gmock/gmock.h>

#include "server/ServerAddress.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using virtualmac::NetworkAnswer;

class UpdatePromptsTest : public ClientTest {
  protected:
    void offer(const std::string& body, int status = 200) {
        answer(std::string("GET ") + server + "/api/version/latest", NetworkAnswer::reply(status, body));
        launch();
    }

    void refuseJoin(const std::string& body) {
        answer(std::string("POST ") + server + "/api/sessions/NQRP5D/join", NetworkAnswer::reply(400, body));
        launch();
        join();
        mac().runFor(1);
    }

    Alert alert() {
        const auto up = mac().alerts().up();
        EXPECT_EQ(up.size(), 1u);
        return up.empty() ? Alert() : up.back();
    }
};

constexpr const char* recommended =
    R"({"updateAvailable":true,"severity":"recommended","latestVersion":"2.1","releaseNotes":"Uno\nDue","downloadUrl":"https://d.example/x"})";

TEST_F(UpdatePromptsTest, AsksOnceOneSecondAfterTheStart) {
    launch();
    mac().runFor(600);
    const auto sent = mac().network().sent();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].time, 1.0);
    EXPECT_EQ(sent[0].request.url.absoluteString,
              std::string(server) + "/api/version/latest?os=macos&current=2.0-macOS");
    EXPECT_EQ(sent[0].request.method, "GET");
    EXPECT_EQ(sent[0].request.timeoutInterval, 8);
    EXPECT_THAT(sent[0].request.headers, IsEmpty());
    EXPECT_FALSE(sent[0].request.body);
}

TEST_F(UpdatePromptsTest, RecommendsANewerVersion) {
    offer(recommended);
    EXPECT_EQ(alert().style, AlertStyle::informational);
    EXPECT_EQ(alert().messageText, "Aggiornamento Vantrel consigliato");
    EXPECT_EQ(alert().informativeText,
              "È disponibile la versione 2.1 (la tua è 2.0-macOS).\n\nNote di rilascio:\nUno\nDue");
    EXPECT_THAT(alert().buttons, ElementsAre("Apri pagina download", "Più tardi"));
    EXPECT_THAT(logLines(), Contains("[UPDATE] Disponibile v2.1 (severity=recommended)"));
    participant().answerAlert("Apri pagina download");
    mac().runFor(0);
    EXPECT_THAT(mac().workspace().opened(), ElementsAre("https://d.example/x"));
}

TEST_F(UpdatePromptsTest, OpensNothingLater) {
    offer(recommended);
    participant().answerAlert("Più tardi");
    mac().runFor(0);
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
    EXPECT_EQ(screen(), "joinView");
}

TEST_F(UpdatePromptsTest, LeavesTheNotesOutWhenThereAreNone) {
    offer(R"({"updateAvailable":true,"severity":"","latestVersion":"2.1"})");
    EXPECT_EQ(alert().informativeText, "È disponibile la versione 2.1 (la tua è 2.0-macOS).");
    participant().answerAlert("Apri pagina download");
    mac().runFor(0);
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(UpdatePromptsTest, AnnouncesAMandatoryVersion) {
    offer(R"({"updateAvailable":true,"severity":"required","latestVersion":"3","downloadUrl":"https://d.example/x"})");
    EXPECT_EQ(alert().style, AlertStyle::warning);
    EXPECT_EQ(alert().messageText, "Aggiornamento Vantrel obbligatorio");
    EXPECT_EQ(alert().informativeText,
              "È disponibile la versione 3, che è obbligatoria per partecipare alle sessioni.");
    EXPECT_THAT(alert().buttons, ElementsAre("Apri pagina download"));
    participant().answerAlert("Apri pagina download");
    mac().runFor(0);
    EXPECT_THAT(mac().workspace().opened(), ElementsAre("https://d.example/x"));
    EXPECT_TRUE(mac().isRunning());
    enterLockdown();
}

TEST_F(UpdatePromptsTest, TakesSeverityByItsCase) {
    offer(R"({"updateAvailable":true,"severity":"Required","latestVersion":"3"})");
    EXPECT_EQ(alert().messageText, "Aggiornamento Vantrel consigliato");
}

TEST_F(UpdatePromptsTest, OnlyLogsAVersionWithoutSeverity) {
    offer(R"({"updateAvailable":true,"latestVersion":"2.1"})");
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_THAT(logLines(), Contains("[UPDATE] Disponibile v2.1 (severity=info)"));
}

TEST_F(UpdatePromptsTest, CountsKeysOfAnotherTypeAsAbsent) {
    offer(R"({"updateAvailable":true,"severity":7,"latestVersion":null,"releaseNotes":[],"downloadUrl":true})");
    EXPECT_THAT(logLines(), Contains("[UPDATE] Disponibile v (severity=info)"));
}

TEST_F(UpdatePromptsTest, TakesOneForTrueAsNoUpdate) {
    offer(R"({"updateAvailable":1,"severity":"required"})");
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_THAT(logLines(), Contains("[UPDATE] Versione corrente è l'ultima disponibile"));
}

TEST_F(UpdatePromptsTest, LogsAnInvalidReply) {
    offer("", 204);
    EXPECT_THAT(logLines(), Contains("[UPDATE] Check: risposta non valida"));
}

TEST_F(UpdatePromptsTest, LogsABodyThatIsNoObject) {
    offer("[true]");
    EXPECT_THAT(logLines(), Contains("[UPDATE] Check: JSON non parsabile"));
}

TEST_F(UpdatePromptsTest, LogsATransportFailure) {
    answer(std::string("GET ") + server + "/api/version/latest", NetworkAnswer::failure("Rete assente."));
    launch();
    EXPECT_THAT(logLines(), Contains("[UPDATE] Check fallito: Rete assente."));
}

TEST_F(UpdatePromptsTest, ChecksAtTheAddressInTheFieldThoughItIsNotSaved) {
    mac().at(0.5, [this] { participant().type("serverUrlField", "https://edited.example/"); });
    launch();
    EXPECT_THAT(requests(), ElementsAre("GET https://edited.example/api/version/latest?os=macos&current=2.0-macOS"));
    EXPECT_EQ(mac().defaults().values().at("vt_serverURL"), server);
}

TEST_F(UpdatePromptsTest, ChecksAtTheDefaultAddressWhenTheFieldIsEmpty) {
    mac().at(0.5, [this] { participant().type("serverUrlField", ""); });
    launch();
    EXPECT_THAT(requests(), ElementsAre("GET " + std::string(defaultServerAddress) +
                                        "/api/version/latest?os=macos&current=2.0-macOS"));
}

TEST_F(UpdatePromptsTest, SendsNothingToAnAddressThatIsNoURL) {
    mac().at(0.5, [this] { participant().type("serverUrlField", "https://a b"); });
    launch();
    EXPECT_THAT(requests(), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre("[APP] Vantrel avviato"));
}

TEST_F(UpdatePromptsTest, ExplainsARefusalWithoutTextsOfTheServer) {
    refuseJoin(R"({"error":"client_outdated"})");
    EXPECT_EQ(alert().style, AlertStyle::warning);
    EXPECT_EQ(alert().messageText, "Aggiornamento Vantrel richiesto");
    EXPECT_EQ(alert().informativeText, "Versione Vantrel non più supportata.");
    EXPECT_THAT(alert().buttons, ElementsAre("OK"));
    participant().answerAlert("OK");
    mac().runFor(1);
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
    EXPECT_EQ(text("errorLabel"), "❌ Versione Vantrel non più supportata. Scarica la nuova versione.");
}

TEST_F(UpdatePromptsTest, ExplainsARefusalInTheServersWords) {
    refuseJoin(R"({"error":"client_outdated","message":"Aggiorna!","downloadUrl":"https://d.example/y"})");
    EXPECT_EQ(alert().informativeText, "Aggiorna!");
    EXPECT_THAT(alert().buttons, ElementsAre("Apri pagina download", "Annulla"));
    participant().answerAlert("Apri pagina download");
    mac().runFor(1);
    EXPECT_THAT(mac().workspace().opened(), ElementsAre("https://d.example/y"));
}

TEST_F(UpdatePromptsTest, HoldsTheFailureOfTheJoinBackUntilItIsDismissed) {
    launch();
    answer(std::string("POST ") + server + "/api/sessions/NQRP5D/join",
           NetworkAnswer::reply(400, R"({"error":"client_outdated","downloadUrl":"https://d.example/x"})", 1));
    join();
    mac().runFor(5);
    EXPECT_THAT(alerts(), ElementsAre("Aggiornamento Vantrel richiesto"));
    EXPECT_EQ(text("errorLabel"), "⏳ Connessione al server...");
    participant().answerAlert("Annulla");
    mac().runFor(0);
    EXPECT_EQ(text("errorLabel"), "❌ Versione Vantrel non più supportata. Scarica la nuova versione.");
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
}

TEST_F(UpdatePromptsTest, IgnoresADownloadAddressThatIsNoURL) {
    refuseJoin(R"({"error":"client_outdated","downloadUrl":"https://d.example/a b"})");
    EXPECT_THAT(alert().buttons, ElementsAre("Apri pagina download", "Annulla"));
    participant().answerAlert("Apri pagina download");
    mac().runFor(1);
    EXPECT_THAT(mac().workspace().opened(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
