#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using virtualmac::NetworkAnswer;

const Screen builtIn{"Display integrato", {{0, 0}, {1440, 900}}};
const Screen beside{"Monitor A", {{1440, 0}, {1920, 1080}}};

/// A lockdown in a whole session, with all of its services running.
class WholeLockdown : public ClientTest {
  protected:
    explicit WholeLockdown(virtualmac::Options options = returningParticipant()) : ClientTest(std::move(options)) {}

    void begin() {
        mac().screens().setUp({{builtIn, beside}, 0, true});
        launch();
        enterLockdown();
        forgetEvents();
    }
    ProcessIdentifier chrome() {
        const auto process = mac().processes().running("com.google.Chrome");
        return process ? process->processIdentifier() : 0;
    }
    std::int64_t window() { return mac().desktop().windowsOf(chrome()).at(0).number; }
    void press(std::string_view key) { participant().pressKey(*virtualmac::KeyStroke::parse(key)); }
    void bringNotesForward() {
        virtualmac::ApplicationDescription description;
        description.name = "Note";
        description.bundleIdentifier = "com.example.notes";
        mac().processes().find(mac().processes().add(std::move(description)))->comeToFront();
    }
    std::size_t count(std::string_view line) {
        const auto lines = logLines();
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
    }
    std::size_t notices() {
        std::size_t notices = 0;
        for (const auto& body : bodies("/api/heartbeat"))
            notices += body.find(R"("disconnecting":true)") != std::string::npos;
        return notices;
    }
    void endWithTheServersWord(double latency) {
        answer(std::string("POST ") + server + "/api/heartbeat",
               NetworkAnswer::reply(200, R"({"sessionEnded":true})", latency));
    }
    /// One end screen, one notice to the server, nothing left.
    void expectOneEnd(const std::string& message) {
        expectOneEnd();
        EXPECT_EQ(text("endMessageLabel"), message);
    }
    void expectOneEnd() {
        mac().runFor(20);
        EXPECT_EQ(screen(), "endView");
        EXPECT_EQ(count("[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"), 1u);
        EXPECT_EQ(notices(), 1u);
        expectNothingLeft();
    }
};

TEST_F(WholeLockdown, CoversTheOtherDisplayUntilItEnds) {
    begin();
    ASSERT_THAT(mac().overlays().all(), SizeIs(1));
    EXPECT_EQ(mac().overlays().all().at(0).description.frame, beside.frame);
    askToEnd();
    participant().answerAlert("Termina");
    expectOneEnd("Sessione terminata dall'utente");
}

TEST_F(WholeLockdown, ReportsASwallowedKeyToTheServer) {
    begin();
    press("cmd+q");
    mac().runFor(16);
    EXPECT_THAT(logLines(), Contains("[HOOK] 🚫 Bloccato: Cmd+Q"));
    EXPECT_THAT(bodies("/api/heartbeat").back(), HasSubstr(R"("type":"KEY_BLOCKED")"));
    EXPECT_THAT(bodies("/api/heartbeat").back(), HasSubstr("Cmd+Q"));
    EXPECT_NE(chrome(), 0);
}

TEST_F(WholeLockdown, ReportsATakenFocusToTheServer) {
    begin();
    bringNotesForward();
    mac().runFor(16);
    EXPECT_THAT(bodies("/api/heartbeat").back(), HasSubstr(R"("type":"FOCUS_VIOLATION")"));
    EXPECT_THAT(bodies("/api/heartbeat").back(), HasSubstr("Note"));
    EXPECT_EQ(texts(ApplicationEvent::frontmost).back(), "Google Chrome");
}

TEST_F(WholeLockdown, EndsWithTheBrowsersWindow) {
    begin();
    mac().desktop().close(window());
    mac().runFor(4);
    expectOneEnd("La finestra di Meet è stata chiusa");
    EXPECT_EQ(chrome(), 0);
}

TEST_F(WholeLockdown, EndsWithTheBrowser) {
    begin();
    mac().processes().exit(chrome());
    mac().runFor(2);
    expectOneEnd("Il browser si è chiuso inaspettatamente");
}

TEST_F(WholeLockdown, EndsAwayFromTheMeetingsSpace) {
    begin();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    participant().swipe(virtualmac::VirtualSpaces::Direction::left);
    mac().runFor(5);
    expectOneEnd("La finestra di Meet è stata chiusa");
    EXPECT_EQ(chrome(), 0);
}

TEST_F(WholeLockdown, EndsAwayFromTheMeetingsSpaceWithFlagsThatFollow) {
    begin();
    mac().desktop().setFlagDelay(0.1);
    participant().swipe(virtualmac::VirtualSpaces::Direction::left);
    mac().runFor(5);
    expectOneEnd("La finestra di Meet è stata chiusa");
    EXPECT_EQ(chrome(), 0);
}

TEST_F(WholeLockdown, HearsOfAFullScreenConfirmedAfterItsStart) {
    mac().accessibility().faults().fail(virtualmac::AccessibilityFaults::Operation::write, "AXFullScreen",
                                        accessibilityFailure, 1);
    launch();
    enterLockdown();
    EXPECT_EQ(count("[MONITOR] Fullscreen confermato"), 1u);
    mac().desktop().close(window());
    mac().runFor(4);
    EXPECT_THAT(logLines(), Contains("[MONITOR] Finestra chiusa da fullscreen — fine sessione immediata"));
    expectOneEnd("La finestra di Meet è stata chiusa");
}

TEST_F(WholeLockdown, EndsWithTheServersWord) {
    begin();
    endWithTheServersWord(0);
    mac().runFor(16);
    expectOneEnd("Sessione terminata dall'utente");
}

TEST_F(WholeLockdown, StandsWithoutTheTapThatTheSystemRefuses) {
    mac().keyboard().refuse(virtualmac::VirtualKeyboardTaps::always);
    begin();
    press("cmd+0");
    mac().runFor(20);
    EXPECT_EQ(screen(), "none");
    mac().processes().exit(chrome());
    mac().runFor(2);
    expectOneEnd("Il browser si è chiuso inaspettatamente");
}

TEST_F(WholeLockdown, DoesNotSayThatARefusedTapIsAtWork) {
    mac().keyboard().refuse(virtualmac::VirtualKeyboardTaps::always);
    launch();
    enterLockdown();
    EXPECT_THAT(logLines(), Not(Contains("[LOCKDOWN] ✅ Keyboard hook verificato e attivo")));
    EXPECT_THAT(logLines(), Contains("✅ Step 2/4: Keyboard hook attivato"));
}

TEST_F(WholeLockdown, LeavesTheKeysAloneAfterItsEnd) {
    begin();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(10);
    forgetEvents();
    press("cmd+tab");
    mac().runFor(1);
    EXPECT_THAT(texts(KeyboardEvent::swallowed), IsEmpty());
}

TEST_F(WholeLockdown, WithTheStatusMenuLeftOpenForAMinuteWatchesOnAfterwards) {
    begin();
    participant().openStatusMenu();
    bringNotesForward();
    mac().runFor(60);
    EXPECT_THAT(logLines(), Not(Contains(HasSubstr("Focus su"))));
    participant().closeMenu();
    mac().runFor(2);
    EXPECT_THAT(logLines(), Contains("[MONITOR] Focus su Note — riporto Google Chrome in primo piano"));
}

TEST_F(WholeLockdown, SwallowsKeysWhileTheStatusMenuIsOpen) {
    begin();
    participant().openStatusMenu();
    mac().runFor(5);
    press("cmd+tab");
    mac().runFor(1);
    EXPECT_THAT(texts(KeyboardEvent::swallowed), ElementsAre("cmd+tab"));
    participant().closeMenu();
}

TEST_F(WholeLockdown, StandsWhileTheLidIsClosed) {
    begin();
    mac().clock().closeLid(3600);
    mac().runFor(20);
    EXPECT_EQ(screen(), "none");
    EXPECT_EQ(mac().overlays().all().size(), 1u);
    EXPECT_FALSE(bodies("/api/heartbeat").empty());
}

TEST_F(WholeLockdown, EndsOnceForABrowserThatEndsWhileTheEndIsAskedFor) {
    begin();
    askToEnd();
    mac().processes().exit(chrome());
    participant().answerAlert("Termina");
    mac().runFor(2);
    expectOneEnd("Sessione terminata dall'utente");
}

/// The server and the monitor end the session at the same time.
class TwoCauses : public WholeLockdown {
  protected:
    static constexpr const char* serversWord = "[HEARTBEAT] Sessione terminata dal backend";
    static constexpr const char* browserGone = "[MONITOR] Google Chrome non in esecuzione — fine sessione";
    static constexpr const char* spaceLeft =
        "[MONITOR] ⚠️ Utente cambiato a Space diverso da Meet — kill browser e fine sessione";

    explicit TwoCauses(virtualmac::Options options = returningParticipant()) : WholeLockdown(std::move(options)) {}

    static virtualmac::Options seeded(std::uint64_t seed) {
        auto options = returningParticipant();
        options.seed = seed;
        return options;
    }

    /// Heartbeats are sent every 15 seconds and ticks run every 1.5, from the same start. The reply to the second
    /// heartbeat arrives with the eleventh tick.
    void beginTogether() {
        launch();
        join();
        mac().runFor(10);
        const auto requests = events(NetworkEvent::request);
        const auto first = std::find_if(requests.begin(), requests.end(),
                                        [](const auto& request) { return request.text.ends_with("/api/heartbeat"); });
        ASSERT_NE(first, requests.end());
        together_ = first->time + 16.5;
        endWithTheServersWord(1.5);
        forgetEvents();
    }
    double together() const { return together_; }
    /// What becomes due in between waits, and then runs in the order in which it was due.
    void keepMainBusy(double from, double until) {
        mac().at(from, [this, from, until] {
            mac().postToMain([this, from, until] { computer().threads.sleep(until - from); });
        });
    }
    void leaveTheSpaceAt(double time) {
        // The flags already show the new state when the notification is handled.
        mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
        mac().at(time, [this] { mac().spaces().swipe(virtualmac::VirtualSpaces::Direction::left); });
    }
    /// The reply and the tick that misses the browser wait for the main thread. The seed decides their order.
    void loseTheBrowserTogether() {
        keepMainBusy(together() - 0.1, together() + 0.1);
        mac().at(together() - 0.5, [this] { mac().processes().exit(chrome()); });
        mac().runUntil(together() + 5);
        EXPECT_EQ(count(serversWord), 1u);
        EXPECT_EQ(count(browserGone), 1u);
    }

  private:
    double together_ = 0;
};

TEST_F(TwoCauses, InOneTurnEndTheSessionWithTheFirst) {
    beginTogether();
    // The server's message is passed to the main queue, where the check of the Space already waits: the end comes after
    // both.
    keepMainBusy(together() + 0.4, together() + 0.8);
    endWithTheServersWord(2);
    leaveTheSpaceAt(together() + 0.3);
    mac().runUntil(together() + 5);
    std::vector<std::string> order;
    for (const auto& line : logLines()) {
        if (line == serversWord || line == spaceLeft || line.starts_with("[SESSION] Fine sessione")) {
            order.push_back(line);
        }
    }
    EXPECT_THAT(order, ElementsAre(serversWord, spaceLeft, "[SESSION] Fine sessione: Sessione terminata dall'utente"));
    expectOneEnd("Sessione terminata dall'utente");
}

class CausesTogether : public TwoCauses, public testing::WithParamInterface<std::uint64_t> {
  protected:
    CausesTogether() : TwoCauses(seeded(GetParam())) {}
};

TEST_P(CausesTogether, EndTheSessionOnceAwayFromTheMeetingsSpace) {
    beginTogether();
    leaveTheSpaceAt(together() - 0.3);
    mac().runUntil(together() + 5);
    EXPECT_EQ(count(serversWord), 1u);
    EXPECT_EQ(count(spaceLeft), 1u);
    expectOneEnd();
}

TEST_P(CausesTogether, EndTheSessionOnceForABrowserThatIsGone) {
    beginTogether();
    loseTheBrowserTogether();
    expectOneEnd();
}

INSTANTIATE_TEST_SUITE_P(Seeds, CausesTogether, testing::Range<std::uint64_t>(0, 20));

/// A whole run of its own inside a test.
class BrowserLostWithSeed final : public TwoCauses {
  public:
    explicit BrowserLostWithSeed(std::uint64_t seed) : TwoCauses(seeded(seed)) {}

    std::string endMessage() {
        beginTogether();
        loseTheBrowserTogether();
        expectOneEnd();
        const auto message = text("endMessageLabel");
        TearDown();
        return message;
    }

  private:
    void TestBody() override {}
};

TEST(CausesInAnyOrder, LetNowTheOneAndNowTheOtherEndTheSession) {
    std::set<std::string> messages;
    for (std::uint64_t seed = 0; seed <= 40; ++seed) messages.insert(BrowserLostWithSeed(seed).endMessage());
    EXPECT_THAT(messages, ElementsAre("Il browser si è chiuso inaspettatamente", "Sessione terminata dall'utente"));
}

TEST_F(WholeLockdown, CanBeEnteredAThousandTimesWithoutGrowing) {
    mac().screens().setUp({{builtIn, beside}, 0, true});
    launch();
    virtualmac::Leftovers first;
    for (int round = 0; round < 1000; ++round) {
        join();
        mac().runFor(5);
        ASSERT_EQ(screen(), "none") << "in round " << round;
        askToEnd();
        participant().answerAlert("Termina");
        mac().runFor(5);
        participant().press("Nuova sessione");
        mac().runFor(0.1);
        forgetEvents();
        mac().runUntilIdle();
        if (round == 0) first = mac().leftovers();
    }
    EXPECT_EQ(mac().leftovers(), first);
}

}  // namespace
}  // namespace vantrel
