#include <gmock/gmock.h>

#include <algorithm>

#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using virtualmac::NetworkAnswer;

constexpr const char* fullscreenDone = "✅ Step 1/4: Fullscreen completato";

/// The join button is pressed again before a lockdown is complete. A launch of Chrome takes 3 seconds.
class SecondPressTest : public ClientTest {
  protected:
    SecondPressTest() {
        mac().screens().setUp(
            {{{"Display integrato", {{0, 0}, {1440, 900}}}, {"Monitor A", {{1440, 0}, {1920, 1080}}}}, 0, true});
    }

    void setMicrophone(AuthorizationStatus status) { mac().capture().setStatus(MediaType::audio, status); }
    void makeMicrophoneUndecided() { setMicrophone(AuthorizationStatus::notDetermined); }

    /// Another session's code, whose reply arrives after `latency`.
    void openSession(const std::string& code, double latency) {
        const auto address = std::string(server) + "/api/sessions/" + code;
        answer("GET " + address, NetworkAnswer::reply(200, R"({"status":"ACTIVE"})", latency));
        answer("POST " + address + "/join",
               NetworkAnswer::reply(
                   200, R"({"meetLink":"https://meet.example/x","userToken":"U","sessionTitle":")" + code + R"("})"));
    }

    /// The first activation waits for the microphone when the button is pressed again.
    void pressTwiceUnderThePrompt() {
        makeMicrophoneUndecided();
        launch();
        join();
        mac().runFor(3);
        ASSERT_EQ(mac().capture().prompts(), 1u);
        ASSERT_TRUE(isEnabled("joinButton"));
        participant().press("joinButton");
        mac().runFor(3);
    }

    /// The first activation's browser is being launched when the button is pressed again. The second activation waits
    /// for the microphone.
    void pressAgainInTheLaunch() {
        launch();
        join();
        mac().runFor(1);
        makeMicrophoneUndecided();
        participant().press("joinButton");
        mac().runFor(1);
        ASSERT_EQ(mac().capture().prompts(), 1u);
    }

    /// A lockdown stands while the second activation waits for the microphone.
    void waitInAStandingLockdown() {
        launch();
        openSession("ALTRA", 5);
        join();
        mac().runFor(1);
        join("ALTRA");
        mac().runFor(3);
        ASSERT_EQ(screen(), "none");
        makeMicrophoneUndecided();
        mac().runFor(3);
        ASSERT_EQ(mac().capture().prompts(), 1u);
    }

    std::ptrdiff_t count(std::string_view line) const {
        const auto lines = logLines();
        return std::count(lines.begin(), lines.end(), line);
    }
    double timeOf(std::string_view line) const {
        for (const auto& event : events(ClientEvent::log)) {
            if (event.text == line) return event.time;
        }
        ADD_FAILURE() << "not logged: " << line;
        return 0;
    }
    std::size_t running(std::string_view bundleIdentifier) {
        return mac().processes().running(std::string(bundleIdentifier)) ? 1 : 0;
    }
    void end() {
        askToEnd();
        participant().answerAlert("Termina");
        mac().runFor(10);
        ASSERT_EQ(screen(), "endView");
    }

    /// Exactly one lockdown is complete.
    void expectOneLockdown() {
        EXPECT_EQ(screen(), "none");
        const auto held = mac().leftovers();
        EXPECT_EQ(held.statusItems, 1u);
        EXPECT_EQ(held.overlays, 1u);
        EXPECT_EQ(held.keyboardTaps, 1u);
        // Those of the monitor, the covers and the heartbeat.
        EXPECT_EQ(held.timers, 3u);
        // Those of the active Space and the displays.
        EXPECT_EQ(held.observers, 2u);
    }
    void expectOneHeartbeatIn15Seconds() {
        const auto before = bodies("/api/heartbeat").size();
        mac().runFor(15);
        EXPECT_EQ(bodies("/api/heartbeat").size(), before + 1);
    }
    void expectKeysSwallowed() {
        forgetEvents();
        participant().pressKey(*virtualmac::KeyStroke::parse("cmd+tab"));
        mac().runFor(0);
        EXPECT_THAT(texts(KeyboardEvent::swallowed), ElementsAre("cmd+tab"));
        EXPECT_THAT(logLines(), ElementsAre("[HOOK] 🚫 Bloccato: Cmd+Tab"));
    }
};

TEST_F(SecondPressTest, UnderThePromptCompletesTheLockdownAtOnceWhenItIsAnswered) {
    pressTwiceUnderThePrompt();
    participant().answerPermissionPrompt(true);
    mac().runFor(0);
    expectOneLockdown();
    EXPECT_EQ(count(fullscreenDone), 1);
    EXPECT_THAT(bodies("/api/heartbeat"), SizeIs(1));
}

TEST_F(SecondPressTest, UnderThePromptCompletesTwiceWithOneOfEach) {
    pressTwiceUnderThePrompt();
    participant().answerPermissionPrompt(true);
    mac().runFor(5);
    EXPECT_EQ(count(fullscreenDone), 2);
    EXPECT_EQ(count("[HOOK] Hook tastiera attivato"), 1);
    EXPECT_EQ(count("[MONITOR] Monitoraggio avviato"), 1);
    EXPECT_EQ(count("[HEARTBEAT] Avviato (ogni 15s) → https://server.example"), 1);
    expectOneLockdown();
    expectOneHeartbeatIn15Seconds();
    expectKeysSwallowed();
}

TEST_F(SecondPressTest, UnderThePromptOpensOneBrowser) {
    pressTwiceUnderThePrompt();
    participant().answerPermissionPrompt(true);
    mac().runFor(10);
    EXPECT_THAT(events(ProcessEvent::started), SizeIs(1));
    EXPECT_EQ(count("[BROWSER] Reset stato per nuova sessione"), 1);
}

TEST_F(SecondPressTest, LeavesNothingBehindAfterTheEnd) {
    pressTwiceUnderThePrompt();
    participant().answerPermissionPrompt(true);
    mac().runFor(5);
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(60);
    EXPECT_EQ(screen(), "endView");
    expectNothingLeft();
}

TEST_F(SecondPressTest, ThatWaitsForAPromptLetsTheFirstLaunchLock) {
    pressAgainInTheLaunch();
    EXPECT_EQ(screen(), "joinView");
    mac().runFor(1.1);
    expectOneLockdown();
    EXPECT_THAT(bodies("/api/heartbeat"), SizeIs(1));
    expectKeysSwallowed();
}

TEST_F(SecondPressTest, ThatNeverComesToItsLaunchEndsTheSessionOnTheNinthTick) {
    pressAgainInTheLaunch();
    mac().runFor(1.1);
    const double start = timeOf("[MONITOR] Monitoraggio avviato");
    mac().runUntil(start + 9 * 1.5 - 0.01);
    EXPECT_EQ(screen(), "none");
    EXPECT_EQ(count("[MONITOR] Browser non trovato — grace period attivo (0 tick rimanenti)"), 1);
    mac().runFor(5);
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(text("endMessageLabel"), "Il browser si è chiuso inaspettatamente");
    EXPECT_EQ(count("[MONITOR] Browser non in esecuzione — fine sessione"), 1);
    // The first browser belonged to a replaced launcher, so nobody closes it.
    EXPECT_EQ(running("com.google.Chrome"), 1u);

    forgetEvents();
    participant().answerPermissionPrompt(true);
    mac().runFor(30);
    EXPECT_THAT(logLines(), ElementsAre("[TCC] Microfono: ✅ concesso"));
    EXPECT_EQ(screen(), "endView");
    expectNothingLeft();
}

TEST_F(SecondPressTest, InTheLaunchCompletesTwiceWithOneOfEach) {
    launch();
    join();
    mac().runFor(1);
    participant().press("joinButton");
    mac().runFor(2.1);
    EXPECT_EQ(count(fullscreenDone), 1);
    expectOneLockdown();
    mac().runFor(1);
    EXPECT_EQ(count(fullscreenDone), 2);
    expectOneLockdown();
    expectOneHeartbeatIn15Seconds();
    end();
    expectNothingLeft();
}

TEST_F(SecondPressTest, EveryTwoAndAHalfSecondsLocksWithTheFirstLaunch) {
    launch();
    join();
    for (int press = 0; press < 10; ++press) {
        mac().runFor(2.5);
        EXPECT_EQ(screen(), press == 0 ? "joinView" : "none") << "before press " << press;
        participant().press("joinButton");
    }
    mac().runFor(3.1);
    expectOneLockdown();
    expectKeysSwallowed();
}

TEST_F(SecondPressTest, ThatIsRefusedInTheLaunchLetsTheFirstLock) {
    launch();
    join();
    mac().runFor(1);
    mac().trust().setTrusted(false);
    participant().press("joinButton");
    mac().runFor(1);
    ASSERT_THAT(alerts(), ElementsAre("Permesso Accessibilità richiesto"));
    EXPECT_FALSE(isClosable());
    mac().trust().setTrusted(true);
    participant().answerAlert("Annulla");
    mac().runFor(1.1);
    expectOneLockdown();
    expectKeysSwallowed();
}

TEST_F(SecondPressTest, ThatIsRefusedLeavesALockdownThatStandsAsItWas) {
    launch();
    openSession("ALTRA", 5);
    join();
    mac().runFor(1);
    join("ALTRA");
    mac().runFor(3);
    ASSERT_EQ(screen(), "none");
    mac().trust().setTrusted(false);
    mac().runFor(3);
    ASSERT_THAT(alerts(), ElementsAre("Permesso Accessibilità richiesto"));
    participant().answerAlert("Annulla");
    mac().runFor(1);
    EXPECT_FALSE(isClosable());
    EXPECT_EQ(screen(), "none");
    end();
    expectNothingLeft();
}

TEST_F(SecondPressTest, InALockdownThatStandsLeavesItComplete) {
    waitInAStandingLockdown();
    expectOneLockdown();
    EXPECT_EQ(count(fullscreenDone), 1);
    expectOneHeartbeatIn15Seconds();
}

TEST_F(SecondPressTest, InALockdownThatStandsKeepsTheKeysHeld) {
    waitInAStandingLockdown();
    expectKeysSwallowed();
}

TEST_F(SecondPressTest, InALockdownThatStandsKeepsTheShorterTimeoutForAnApplicationThatHangs) {
    waitInAStandingLockdown();
    EXPECT_DOUBLE_EQ(timeOfAReadThatHangs(), limitedAccessibilityTimeout);
}

TEST_F(SecondPressTest, InALockdownThatStandsReportsAtOnceAndAsLockedToItsOwnSession) {
    waitInAStandingLockdown();
    const auto sent = bodies("/api/heartbeat");
    ASSERT_THAT(sent, SizeIs(2));
    EXPECT_THAT(sent[1], HasSubstr(R"("lockdownActive":true,"meetConnected":true)"));
    EXPECT_THAT(sent[1], HasSubstr(R"("sessionCode":"ALTRA")"));
}

TEST_F(SecondPressTest, InALockdownThatStandsEndsItOnTheNinthTickWithoutALaunch) {
    waitInAStandingLockdown();
    mac().runFor(20);
    EXPECT_EQ(screen(), "endView");
    EXPECT_EQ(text("endMessageLabel"), "Il browser si è chiuso inaspettatamente");
    EXPECT_EQ(running("com.google.Chrome"), 1u);
}

TEST_F(SecondPressTest, InALockdownThatStandsCompletesItAgainWithOneOfEach) {
    waitInAStandingLockdown();
    participant().answerPermissionPrompt(true);
    mac().runFor(5);
    EXPECT_EQ(count(fullscreenDone), 2);
    expectOneLockdown();
    expectOneHeartbeatIn15Seconds();
    expectKeysSwallowed();
    end();
    expectNothingLeft();
}

TEST_F(SecondPressTest, ThatWaitsWhenTheLockdownEndsBringsNothingBack) {
    waitInAStandingLockdown();
    end();
    forgetEvents();
    participant().answerPermissionPrompt(true);
    mac().runFor(30);
    EXPECT_THAT(logLines(), ElementsAre("[TCC] Microfono: ✅ concesso"));
    EXPECT_EQ(screen(), "endView");
    EXPECT_TRUE(isClosable());
    expectNothingLeft();
}

TEST_F(SecondPressTest, ThatWaitsForAPromptIsNoStepOfTheNextLockdown) {
    waitInAStandingLockdown();
    end();
    participant().press("Nuova sessione");
    setMicrophone(AuthorizationStatus::authorized);
    forgetEvents();
    join();
    mac().runFor(1);
    participant().answerPermissionPrompt(true);
    mac().runFor(1.9);
    EXPECT_EQ(count(fullscreenDone), 0);
    EXPECT_EQ(mac().leftovers().keyboardTaps, 0u);
    EXPECT_EQ(screen(), "joinView");
    mac().runFor(0.2);
    EXPECT_EQ(count(fullscreenDone), 1);
    EXPECT_THAT(events(ProcessEvent::started), SizeIs(1));
    mac().runFor(5);
    EXPECT_EQ(count(fullscreenDone), 1);
    expectOneLockdown();
}

TEST_F(SecondPressTest, WhoseBrowserIsLaunchedIsNoStepOfTheNextLockdown) {
    launch();
    openSession("ALTRA", 5);
    join();
    mac().runFor(1);
    join("ALTRA");
    mac().runFor(5.1);
    ASSERT_THAT(events(ProcessEvent::started), SizeIs(2));
    participant().openStatusMenu();
    participant().chooseMenuItem("Termina sessione");
    mac().runFor(0.1);
    participant().answerAlert("Termina");
    mac().runFor(1);
    ASSERT_EQ(screen(), "endView");
    participant().press("Nuova sessione");
    forgetEvents();
    join();
    mac().runFor(2.9);
    // The old launch has ended.
    EXPECT_EQ(mac().leftovers().workers, 1u);
    EXPECT_EQ(count(fullscreenDone), 0);
    EXPECT_EQ(count("[HEARTBEAT] Avviato (ogni 15s) → https://server.example"), 0);
    EXPECT_EQ(screen(), "joinView");
    mac().runFor(0.2);
    EXPECT_EQ(count(fullscreenDone), 1);
    expectOneLockdown();
}

}  // namespace
}  // namespace vantrel
