#include <gmock/gmock.h>

#include "app/ApplicationMain.h"
#include "session/MainWindowController.h"
#include "tests/session/ClientTest.h"
#include "tests/session/ReplacedCapabilities.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using virtualmac::NetworkAnswer;

class EndOfSessionTest : public ClientTest {
  protected:
    std::string heartbeat() const { return std::string("POST ") + server + "/api/heartbeat"; }

    std::size_t count(const std::string& line) const {
        const auto lines = logLines();
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
    }

    std::size_t disconnectNotices() {
        std::size_t notices = 0;
        for (const auto& body : bodies("/api/heartbeat"))
            notices += body.find(R"("disconnecting":true)") != std::string::npos;
        return notices;
    }
};

constexpr const char* endScreenShown = "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false";

TEST_F(EndOfSessionTest, RunsInItsOrderWhenTheParticipantEndsIt) {
    launch();
    enterLockdown();
    askToEnd();
    forgetEvents();
    participant().answerAlert("Termina");
    mac().runFor(10);
    EXPECT_THAT(
        logLines(),
        ElementsAre("[SESSION] Fine sessione: Sessione terminata dall'utente", "[HOOK] Hook tastiera disattivato",
                    "[MONITOR] Monitoraggio fermato", "[BLACKOUT] Overlay deattivato", "[BROWSER] Kill Google Chrome",
                    "[SESSION] Browser terminato", "[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente",
                    "[HEARTBEAT] Fermato", endScreenShown));
    EXPECT_EQ(bodies("/api/heartbeat").back(),
              R"({"clientVersion":"2.0-macOS","disconnecting":true,"lockdownActive":false,"meetConnected":false,)"
              R"("platform":"darwin","sessionCode":"NQRP5D","timestamp":"2026-03-02T08:00:34Z","userToken":"T",)"
              R"("violations":[]})");
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(text("endMessageLabel"), "Sessione terminata dall'utente");
    EXPECT_TRUE(isClosable());
    EXPECT_THAT(texts(ClientEvent::activate), testing::SizeIs(1));
    expectNothingLeft();
}

TEST_F(EndOfSessionTest, TakesTheStatusItemAwayBeforeTheWindowComesBack) {
    launch();
    enterLockdown();
    askToEnd();
    forgetEvents();
    participant().answerAlert("Termina");
    mac().runFor(10);
    std::vector<std::pair<EventKind, std::string>> order;
    for (const auto& event : events()) {
        if (event.kind == StatusItemEvent::removed || event.kind == WindowEvent::style ||
            event.kind == WindowEvent::shown || event.kind == ClientEvent::activate ||
            event.kind == ControlEvent::text || event.kind.isA<ViewEvent>()) {
            order.emplace_back(event.kind, event.text);
        }
    }
    EXPECT_THAT(order, ElementsAre(Pair(StatusItemEvent::removed, "🔒 Vantrel"), Pair(WindowEvent::style, "Vantrel"),
                                   Pair(WindowEvent::shown, "Vantrel"), Pair(ClientEvent::activate, ""),
                                   Pair(ControlEvent::text, "endMessageLabel"), Pair(ViewEvent::hidden, "joinView"),
                                   Pair(ViewEvent::shown, "endView")));
}

/// The system's menu bar, with a note of what was removed from it.
class WatchedStatusBar : public StatusBar {
  public:
    WatchedStatusBar(StatusBar& bar, bool& isRemoved) : bar_(bar), isRemoved_(isRemoved) {}

    std::unique_ptr<StatusItem> statusItem(double length) override {
        EXPECT_EQ(length, variableStatusItemLength);
        auto item = bar_.statusItem(length);
        made_ = item.get();
        return item;
    }

    void removeStatusItem(StatusItem& item) override {
        isRemoved_ = &item == made_;
        bar_.removeStatusItem(item);
    }

  private:
    StatusBar& bar_;
    bool& isRemoved_;
    const StatusItem* made_ = nullptr;
};

TEST_F(EndOfSessionTest, RemovesTheStatusItemFromTheBarWhileTheItemLives) {
    bool isRemoved = false;
    mac().launch([&isRemoved](Computer& computer) {
        WatchedStatusBar bar(computer.statusBar, isRemoved);
        ReplacedCapabilities replaced;
        replaced.statusBar = &bar;
        applicationMain(replaced.in(computer));
    });
    mac().runFor(2);
    enterLockdown();
    EXPECT_FALSE(isRemoved);
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    EXPECT_TRUE(isRemoved);
    expectNothingLeft();
    end();
}

TEST_F(EndOfSessionTest, LeavesNoShorterTimeoutForAnApplicationThatHangs) {
    launch();
    enterLockdown();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    EXPECT_DOUBLE_EQ(timeOfAReadThatHangs(), accessibilityTimeout);
}

TEST_F(EndOfSessionTest, SaysNothingOfAHeartbeatThatFailsAfterIt) {
    launch();
    enterLockdown();
    answer(heartbeat(), NetworkAnswer::failure("Richiesta scaduta.", 8));
    mac().runUntil(36);
    answer(heartbeat(), NetworkAnswer::reply(200, "{}"));
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(20);
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(count("[HEARTBEAT] Errore (1/20): Richiesta scaduta."), 0u);
}

TEST_F(EndOfSessionTest, AScreenReaderIsToldTheReasonOnceItIsSeen) {
    launch();
    enterLockdown();
    askToEnd();
    EXPECT_THAT(mac().windows().announcements(), ElementsAre("⏳ Connessione al server..."));
    participant().answerAlert("Termina");
    mac().runFor(10);
    EXPECT_THAT(mac().windows().announcements(),
                ElementsAre("⏳ Connessione al server...", "Sessione terminata dall'utente"));
    EXPECT_THAT(mac().windows().front()->tabOrder(), ElementsAre("newSessionButton"));
}

TEST_F(EndOfSessionTest, ComesWithTheServersWord) {
    launch();
    enterLockdown();
    answer(heartbeat(), NetworkAnswer::reply(200, R"({"sessionEnded":true})"));
    mac().runFor(20);
    EXPECT_EQ(count("[HEARTBEAT] Sessione terminata dal backend"), 1u);
    EXPECT_EQ(text("endMessageLabel"), "Sessione terminata dall'utente");
    EXPECT_EQ(disconnectNotices(), 1u);
    expectNothingLeft();
}

TEST_F(EndOfSessionTest, GivesOneEndScreenAndOneNoticeForTwoCauses) {
    launch();
    enterLockdown();
    // A heartbeat is sent at 35 s; its answer arrives while the question is shown.
    answer(heartbeat(), NetworkAnswer::reply(200, R"({"sessionEnded":true})", 5));
    mac().runUntil(36);
    askToEnd();
    mac().runUntil(60);
    EXPECT_EQ(screen(), "endView");
    participant().answerAlert("Termina");
    mac().runFor(60);
    EXPECT_EQ(count(endScreenShown), 1u);
    EXPECT_EQ(count("[SESSION] Fine sessione: Sessione terminata dall'utente"), 1u);
    EXPECT_EQ(disconnectNotices(), 1u);
    expectNothingLeft();
}

TEST_F(EndOfSessionTest, ShowsItsOwnReasonThoughAnEarlierOneEndedOtherwise) {
    launch();
    enterLockdown();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    ASSERT_EQ(text("endMessageLabel"), "Sessione terminata dall'utente");
    participant().press("Nuova sessione");
    enterLockdown();
    forgetEvents();
    mac().processes().exit(mac().processes().running("com.google.Chrome")->processIdentifier());
    mac().runFor(3);
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(text("endMessageLabel"), "Il browser si è chiuso inaspettatamente");
    EXPECT_EQ(count("[SESSION] Fine sessione: Il browser si è chiuso inaspettatamente"), 1u);
    EXPECT_EQ(count("[HEARTBEAT] Disconnessione inviata: Il browser si è chiuso inaspettatamente"), 1u);
}

TEST_F(EndOfSessionTest, WaitsFiveSecondsForAServerThatNeverAnswers) {
    launch();
    enterLockdown();
    answer(heartbeat(), NetworkAnswer::silence());
    askToEnd();
    participant().answerAlert("Termina");
    // The browser takes 0.4 seconds to end.
    mac().runFor(0.4 + 4.999);
    EXPECT_EQ(count("[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente"), 0u);
    EXPECT_EQ(screen(), "none");
    mac().runFor(0.001);
    EXPECT_EQ(count("[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente"), 1u);
    EXPECT_EQ(screen(), "endView");
}

TEST_F(EndOfSessionTest, LeavesTheJoinButtonAsItIs) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    launch();
    join();
    mac().runFor(3);
    // A second join is under way, with the button disabled, when the first session ends.
    answer(std::string("GET ") + server + "/api/sessions/NQRP5D",
           NetworkAnswer{0, virtualmac::HTTPAnswer{200, {}, {{7, " "}, {7, " "}}, {}}});
    participant().press("joinButton");
    mac().runFor(1);
    participant().answerPermissionPrompt(true);
    mac().runFor(4);
    ASSERT_EQ(screen(), "none");
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(1);
    ASSERT_EQ(screen(), "endView");
    EXPECT_FALSE(isEnabled("joinButton"));
    participant().press("Nuova sessione");
    mac().runFor(0);
    EXPECT_FALSE(isEnabled("joinButton"));
    mac().runFor(30);
    EXPECT_TRUE(isEnabled("joinButton"));
}

TEST_F(EndOfSessionTest, GivesTheNextSessionAClosableWindowAndNoOldMessage) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    launch();
    join();
    mac().runFor(3);
    // A second join fails inside the lockdown and leaves its message on the hidden join screen.
    answer(std::string("GET ") + server + "/api/sessions/NQRP5D", NetworkAnswer::reply(404, "", 7));
    participant().press("joinButton");
    mac().runFor(1);
    participant().answerPermissionPrompt(true);
    mac().runFor(10);
    ASSERT_EQ(text("errorLabel"), "❌ Codice sessione non trovato");
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    participant().press("Nuova sessione");
    mac().runFor(0);
    EXPECT_EQ(text("errorLabel"), "");
    EXPECT_TRUE(isClosable());
}

TEST_F(EndOfSessionTest, RunsWithoutServicesBeforeTheActivationHasMadeThem) {
    mac().trust().setTrusted(false);
    std::shared_ptr<MainWindowController> kept;
    mac().onMain([&] {
        kept = MainWindowController::create(computer());
        kept->window().makeKeyAndOrderFront();
    });
    join();
    mac().runFor(1);
    ASSERT_THAT(alerts(), ElementsAre("Permesso Accessibilità richiesto"));
    forgetEvents();
    mac().onMain([&] { kept->endSession(SessionEndReason::browserCrashed); });
    EXPECT_THAT(logLines(),
                ElementsAre("[SESSION] Fine sessione: Il browser si è chiuso inaspettatamente", endScreenShown));
    EXPECT_EQ(screen(), "endView");
    participant().answerAlert("Annulla");
    mac().runFor(10);
    EXPECT_TRUE(isClosable());
    EXPECT_THAT(bodies("/api/heartbeat"), testing::IsEmpty());
    expectNothingLeft();
    mac().onMain([&] { kept.reset(); });
}

class EveryReasonTest : public EndOfSessionTest, public testing::WithParamInterface<SessionEndReason> {};

TEST_P(EveryReasonTest, IsShownAndLoggedByItsMessage) {
    std::weak_ptr<MainWindowController> controller;
    std::shared_ptr<MainWindowController> kept;
    mac().onMain([&] { kept = MainWindowController::create(computer()); });
    controller = kept;
    mac().onMain([&] {
        kept->window().makeKeyAndOrderFront();
        kept->endSession(GetParam());
    });
    EXPECT_THAT(logLines(), testing::IsEmpty());
    enterLockdown();
    forgetEvents();
    mac().onMain([&] {
        kept->endSession(GetParam());
        kept->endSession(SessionEndReason::userRequest);
    });
    const auto text = std::string(message(GetParam()));
    EXPECT_THAT(logLines(),
                ElementsAre("[SESSION] Fine sessione: " + text, "[HOOK] Hook tastiera disattivato",
                            "[MONITOR] Monitoraggio fermato", "[BLACKOUT] Overlay deattivato",
                            "[BROWSER] Kill Google Chrome", "[SESSION] Browser terminato",
                            "[HEARTBEAT] Disconnessione inviata: " + text, "[HEARTBEAT] Fermato", endScreenShown));
    EXPECT_EQ(this->text("endMessageLabel"), text);
    EXPECT_THAT(bodies("/api/heartbeat").back(), testing::Not(HasSubstr(text)));
    mac().onMain([&] { kept.reset(); });
    EXPECT_TRUE(controller.expired());
}

INSTANTIATE_TEST_SUITE_P(EndOfSession, EveryReasonTest, testing::ValuesIn(allSessionEndReasons));

TEST(EndScreen, FillsTheFrameThatItIsGiven) {
    EXPECT_EQ(EndScreen::view({{1, 2}, {440, 460}}).frame, (Rect{{1, 2}, {440, 460}}));
}

}  // namespace
}  // namespace vantrel
