#include <gmock/gmock.h>

#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using virtualmac::NetworkAnswer;

class LockdownTest : public ClientTest {};

constexpr const char* line = "🔒 ========================================";

TEST_F(LockdownTest, IsActivatedInItsOrder) {
    launch();
    forgetEvents();
    enterLockdown();
    EXPECT_THAT(
        logLines(),
        ElementsAre("[SESSION] GET status HTTP: 200", R"([SESSION] GET body: {"status":"ACTIVE"})",
                    "[SESSION] Status parsed: ACTIVE", "[SESSION] Join OK — Titolo, MeetLink: https://meet.example/abc",
                    "🔒 Demo Mode: false", line, "🔒 VERIFICA ACCESSIBILITY", line, "🔒 AXIsProcessTrusted: true",
                    "✅ Accessibility OK - Procedo con lockdown", line, "🔒 ATTIVAZIONE LOCKDOWN", line,
                    "🔒 Step 1/4: Fullscreen browser...", "[TCC] Microfono: stato già definito (3)",
                    "[TCC] Camera: stato già definito (3)", "[BROWSER] Reset stato per nuova sessione",
                    "[BROWSER] URL Meet: https://meet.example/abc", "[BROWSER] Browser selezionato: Google Chrome",
                    "[BROWSER] Finestre prima: 1",
                    "[BROWSER] Lancio Google Chrome con args: --app=https://meet.example/abc --new-window",
                    "[BROWSER] Google Chrome PID (new): 501", "[FULLSCREEN] Tentativo 1/8...",
                    "[FULLSCREEN] ✅ Fullscreen attivato via AX", "✅ Step 1/4: Fullscreen completato",
                    "🔒 Step 2/4: Attivazione keyboard hook...", "[HOOK] Hook tastiera attivato",
                    "[LOCKDOWN] ✅ Keyboard hook verificato e attivo", "✅ Step 2/4: Keyboard hook attivato",
                    "🔒 Step 3/4: Avvio window monitor...", "[MONITOR] Fullscreen già confermato all'avvio",
                    "[MONITOR] Monitoraggio avviato", "✅ Step 3/4: Window monitor avviato",
                    "🔒 Step 3.5: Blackout monitor secondari...",
                    "[BLACKOUT] Nessun monitor secondario — sistema single-monitor",
                    "[BLACKOUT] Attivato — escluso: Display integrato, coperti: 0",
                    "✅ Step 3.5: 0 monitor secondari coperti", "🔒 Step 4/4: Setup menu bar...",
                    "✅ Step 4/4: Menu bar configurato", "[HEARTBEAT] Avviato (ogni 15s) → https://server.example", line,
                    "✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅", line));
}

TEST_F(LockdownTest, HidesTheWindowAfterTheFirstHeartbeat) {
    launch();
    forgetEvents();
    enterLockdown();
    std::vector<EventKind> order;
    for (const auto& event : events()) {
        const bool isHeartbeat = event.kind == NetworkEvent::request && event.text.ends_with("/api/heartbeat");
        if (isHeartbeat || event.kind == StatusItemEvent::installed || event.kind == WindowEvent::hidden ||
            event.kind == WindowEvent::style) {
            order.push_back(event.kind);
        }
    }
    ASSERT_GE(order.size(), 4u);
    order.erase(order.begin() + 4, order.end());
    EXPECT_THAT(
        order, ElementsAre(WindowEvent::style, StatusItemEvent::installed, NetworkEvent::request, WindowEvent::hidden));
    EXPECT_FALSE(isClosable());
}

TEST_F(LockdownTest, TellsTheServerThatLockdownAndMeetingAreUp) {
    launch();
    enterLockdown();
    const auto sent = bodies("/api/heartbeat");
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent.front(),
              R"({"clientVersion":"2.0-macOS","disconnecting":false,"lockdownActive":true,"meetConnected":true,)"
              R"("platform":"darwin","sessionCode":"NQRP5D","timestamp":"2026-03-02T08:00:05Z","userToken":"T",)"
              R"("violations":[]})");
}

TEST_F(LockdownTest, ReportsTheCodeAsTypedThoughItJoinsInUpperCase) {
    launch();
    join("nqrp5d");
    mac().runFor(5);
    EXPECT_THAT(requests(), testing::Contains(std::string("POST ") + server + "/api/sessions/NQRP5D/join"));
    ASSERT_THAT(bodies("/api/heartbeat"), testing::SizeIs(1));
    EXPECT_THAT(bodies("/api/heartbeat").front(), HasSubstr(R"("sessionCode":"nqrp5d")"));
}

TEST_F(LockdownTest, ReportsToTheServerWithoutItsOneTrailingSlash) {
    launch();
    participant().type("serverUrlField", std::string(server) + "/");
    join();
    mac().runFor(5);
    EXPECT_THAT(requests(), testing::Contains(std::string("POST ") + server + "/api/heartbeat"));
}

TEST_F(LockdownTest, KeepsTheSecondOfTwoTrailingSlashes) {
    launch();
    participant().type("serverUrlField", std::string(server) + "//");
    join();
    mac().runFor(1);
    EXPECT_EQ(requests().back(), std::string("GET ") + server + "//api/sessions/NQRP5D");
    EXPECT_EQ(text("errorLabel"), "❌ Codice sessione non trovato");
}

TEST_F(LockdownTest, ReportsToTheAddressThatWasSavedWhateverTheFieldSaysLater) {
    launch();
    answer(std::string("GET ") + server + "/api/sessions/NQRP5D",
           NetworkAnswer::reply(200, R"({"status":"ACTIVE"})", 3));
    join();
    mac().runFor(1);
    participant().type("serverUrlField", "https://other.example");
    mac().runFor(9);
    EXPECT_THAT(requests(), testing::Contains(std::string("POST ") + server + "/api/heartbeat"));
    EXPECT_THAT(requests(), testing::Not(testing::Contains("POST https://other.example/api/heartbeat")));
}

}  // namespace
}  // namespace vantrel
