#include <gmock/gmock.h>

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

/// A lockdown in a whole session, with every guard at work.
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
    /// One end screen, one notice, nothing left.
    void expectOneEnd(const std::string& message) {
        mac().runFor(20);
        EXPECT_EQ(screen(), "endView");
        EXPECT_EQ(text("endMessageLabel"), message);
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
    EXPECT_EQ(texts("application-frontmost").back(), "Google Chrome");
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

TEST_F(WholeLockdown, EndsWithTheServersWord) {
    begin();
    answer(std::string("POST ") + server + "/api/heartbeat", NetworkAnswer::reply(200, R"({"sessionEnded":true})"));
    mac().runFor(16);
    expectOneEnd("Sessione terminata dall'utente");
}

TEST_F(WholeLockdown, StandsWithoutTheTapThatTheSystemRefuses) {
    mac().keyboard().refuse(virtualmac::VirtualKeyboard::always);
    begin();
    press("cmd+0");
    mac().runFor(20);
    EXPECT_EQ(screen(), "none");
    mac().processes().exit(chrome());
    mac().runFor(2);
    expectOneEnd("Il browser si è chiuso inaspettatamente");
}

TEST_F(WholeLockdown, DoesNotSayThatARefusedTapIsAtWork) {
    mac().keyboard().refuse(virtualmac::VirtualKeyboard::always);
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
    EXPECT_THAT(texts("key-swallowed"), IsEmpty());
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
    EXPECT_THAT(texts("key-swallowed"), ElementsAre("cmd+tab"));
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

/// A tick of the monitor, a heartbeat whose reply ends the session, the look at a change of Space and the participant's
/// answer, all due at the same moment, in the order of the seed.
class CausesTogether : public WholeLockdown, public testing::WithParamInterface<std::uint64_t> {
  protected:
    static virtualmac::Options seeded() {
        auto options = returningParticipant();
        options.seed = GetParam();
        return options;
    }
    CausesTogether() : WholeLockdown(seeded()) {}

    void beginTogether() {
        launch();
        join();
        mac().runFor(10);
        askToEnd();
        double heartbeat = 0;
        for (const auto& event : events("request")) {
            if (event.text.ends_with("/api/heartbeat") && heartbeat == 0) heartbeat = event.time;
        }
        ASSERT_GT(heartbeat, 0);
        together_ = heartbeat + 15;
        forgetEvents();
    }
    double together() const { return together_; }

  private:
    double together_ = 0;
};

TEST_P(CausesTogether, EndTheSessionOnce) {
    beginTogether();
    // The question to the participant holds the ticks up until it is answered.
    answer(std::string("POST ") + server + "/api/heartbeat", NetworkAnswer::reply(200, R"({"sessionEnded":true})"));
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().at(together() - 0.3, [this] { mac().spaces().swipe(virtualmac::VirtualSpaces::Direction::left); });
    mac().at(together() - 0.2, [this] { participant().answerAlert("Annulla"); });
    mac().runUntil(together() - 0.1);
    participant().openStatusMenu();
    mac().runUntil(together() - 0.05);
    participant().closeMenu();
    mac().runUntil(together() + 20);
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(count("[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"), 1u);
    EXPECT_EQ(notices(), 1u);
    expectNothingLeft();
}

TEST_P(CausesTogether, EndTheSessionOnceForABrowserThatIsGone) {
    beginTogether();
    answer(std::string("POST ") + server + "/api/heartbeat", NetworkAnswer::reply(200, R"({"sessionEnded":true})"));
    mac().at(together() - 3, [this] { participant().answerAlert("Annulla"); });
    mac().at(together() - 0.5, [this] { mac().processes().exit(chrome()); });
    mac().runUntil(together() + 20);
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(count("[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"), 1u);
    EXPECT_EQ(notices(), 1u);
    expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(Seeds, CausesTogether, testing::Range<std::uint64_t>(0, 20));

TEST_F(WholeLockdown, CanBeEnteredAThousandTimesWithoutGrowing) {
    mac().screens().setUp({{builtIn, beside}, 0, true});
    launch();
    virtualmac::Residue first;
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
        if (round == 0) first = mac().residue();
    }
    EXPECT_EQ(mac().residue(), first);
}

}  // namespace
}  // namespace vantrel
