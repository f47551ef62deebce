#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using virtualmac::AccessibilityFaults;
using Operation = virtualmac::AccessibilityFaults::Operation;

class Fullscreen : public BrowserTest {
  protected:
    /// Chrome has been started, and the first attempt is next.
    void launchToFirstAttempt() {
        if (!mac().files().kind(virtualmac::chromePath)) installChrome();
        make(true);
        launch();
        mac().runFor(2.999);
    }
    AccessibilityFaults& faults() { return mac().accessibility().faults(); }
    void refuseFullScreen() { faults().fail(Operation::write, "AXFullScreen", accessibilityFailure); }
    /// The attributes written, as "ATTRIBUTE=VALUE", without refused writes.
    std::vector<std::string> writes() {
        std::vector<std::string> all;
        for (const auto& event : events(ElementEvent::set)) {
            if (event.field(Field::error).empty()) all.push_back(event.text + "=" + event.field(Field::value));
        }
        return all;
    }
    std::vector<double> attemptTimes() {
        std::vector<double> times;
        for (const auto& event : events(ClientEvent::log)) {
            if (event.text.starts_with("[FULLSCREEN] Tentativo")) times.push_back(event.time);
        }
        return times;
    }
};

TEST_F(Fullscreen, IsReachedAndConfirmedOnTheFirstAttempt) {
    launchToFirstAttempt();
    mac().runFor(5);
    EXPECT_THAT(lines("[FULLSCREEN]"),
                ElementsAre("[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] ✅ Fullscreen attivato via AX"));
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_TRUE(monitor().confirmed);
    EXPECT_TRUE(mac().desktop().windowsOf(*launcher().browserPID()).at(0).fullScreen);
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(Fullscreen, ThatIsAlreadyReachedIsConfirmedWithoutAWrite) {
    installChrome();
    make(true);
    launch();
    mac().runFor(2);
    mac().desktop().setFullScreen(mac().desktop().windows().at(0).number, true);
    mac().runFor(5);
    EXPECT_THAT(lines("[FULLSCREEN]"),
                ElementsAre("[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] ✅ Già in fullscreen"));
    EXPECT_THAT(events(ElementEvent::set), IsEmpty());
    EXPECT_TRUE(monitor().confirmed);
    EXPECT_EQ(logLines().back(), "[MONITOR] Fullscreen confermato");
}

TEST_F(Fullscreen, TellsNobodyWhereNoMonitorIsAttached) {
    installChrome();
    launch();
    mac().runFor(10);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_THAT(lines("[MONITOR]"), IsEmpty());
}

TEST_F(Fullscreen, IsTriedEightTimesAndThenTakenAsConfirmed) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(60);
    std::vector<std::string> expected;
    for (int attempt = 1; attempt <= 8; ++attempt) {
        expected.push_back("[FULLSCREEN] Tentativo " + std::to_string(attempt) + "/8...");
        expected.push_back("[FULLSCREEN] AX fallito (code: -25200) — riprovo tra 2s");
    }
    expected.push_back("[FULLSCREEN] Max retry raggiunti — rimango massimizzato");
    EXPECT_EQ(lines("[FULLSCREEN]"), expected);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_TRUE(monitor().confirmed);
    EXPECT_EQ(count("[MONITOR] Fullscreen confermato"), 1u);
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(Fullscreen, IsTriedEveryTwoAndAHalfSecondsForTwenty) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(60);
    const auto times = attemptTimes();
    ASSERT_THAT(times, SizeIs(8));
    for (std::size_t each = 1; each < times.size(); ++each) EXPECT_NEAR(times[each] - times[each - 1], 2.5, 1e-6);
    EXPECT_NEAR(timeOf("[FULLSCREEN] Max retry raggiunti — rimango massimizzato") - times.front(), 20.0, 1e-6);
    // The browser is activated half a second before each attempt but the first.
    const auto activations = timesOf(ApplicationEvent::activate);
    ASSERT_THAT(activations, SizeIs(8));
    EXPECT_NEAR(activations.front() - times.front(), 2.0, 1e-6);
    EXPECT_THAT(activationOptions(), Each("0"));
}

TEST_F(Fullscreen, ThatIsRefusedLeavesTheWindowOverTheWholeMainScreen) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(0.1);
    EXPECT_THAT(writes(), ElementsAre("AXPosition=0 0", "AXSize=1440 900"));
    // The system keeps it below the menu bar.
    EXPECT_GT(mac().desktop().windows().at(0).frame.origin.y, 0);
}

TEST_F(Fullscreen, PassesTheMainScreensFrameAsItIs) {
    mac().screens().change(
        {{{"Integrato", {{0, 0}, {1440, 900}}}, {"Proiettore", {{-1920, 900}, {1920, 1080}}}}, std::size_t{1}, true});
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(0.1);
    EXPECT_THAT(writes(), ElementsAre("AXPosition=-1920 900", "AXSize=1920 1080"));
}

TEST_F(Fullscreen, TakesACommonSizeWhereThereIsNoMainScreen) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().screens().change({{}, 0, true});
    mac().runFor(0.1);
    EXPECT_THAT(writes(), ElementsAre("AXPosition=0 0", "AXSize=1440 900"));
}

TEST_F(Fullscreen, IgnoresWhatComesOfTheMaximising) {
    refuseFullScreen();
    faults().fail(Operation::write, "AXPosition", accessibilityCannotComplete);
    faults().fail(Operation::write, "AXSize", accessibilityCannotComplete);
    launchToFirstAttempt();
    mac().runFor(30);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
}

TEST_F(Fullscreen, WritesTheSizeThoughThePositionIsRefused) {
    refuseFullScreen();
    faults().fail(Operation::write, "AXPosition", accessibilityCannotComplete);
    launchToFirstAttempt();
    mac().runFor(0.1);
    EXPECT_THAT(texts(ElementEvent::set), ElementsAre("AXFullScreen", "AXPosition", "AXSize"));
    EXPECT_THAT(writes(), ElementsAre("AXSize=1440 900"));
}

TEST_F(Fullscreen, IsRetriedWithoutAWindowAndNothingIsMaximised) {
    installChrome([](auto& chrome) { chrome.windows.clear(); });
    launchToFirstAttempt();
    mac().runFor(60);
    EXPECT_EQ(count("[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"), 8u);
    EXPECT_EQ(lines("[FULLSCREEN]").back(), "[FULLSCREEN] Max retry raggiunti — rimango massimizzato");
    EXPECT_THAT(events(ElementEvent::set), IsEmpty());
}

TEST_F(Fullscreen, TakesAListThatCannotBeReadForNoWindow) {
    for (const auto error : {accessibilityCannotComplete, accessibilityDisabled, accessibilityFailure}) {
        forgetEvents();
        faults().clear();
        faults().fail(Operation::read, "AXWindows", error);
        launchToFirstAttempt();
        mac().runFor(0.1);
        EXPECT_THAT(lines("[FULLSCREEN]"),
                    ElementsAre("[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"));
        release();
    }
}

TEST_F(Fullscreen, TakesAListOfAnotherTypeForNoWindow) {
    for (const auto& value : {AccessibilityValue(), AccessibilityValue(true), AccessibilityValue(Point{1, 2}),
                              AccessibilityValue(Size{})}) {
        forgetEvents();
        faults().clear();
        faults().answer("AXWindows", value);
        launchToFirstAttempt();
        mac().runFor(0.1);
        EXPECT_EQ(lines("[FULLSCREEN]").back(), "[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s");
        release();
    }
}

TEST_F(Fullscreen, IsSetWhereItCannotBeReadOrIsNoBoolean) {
    faults().fail(Operation::read, "AXFullScreen", accessibilityCannotComplete, 1);
    launchToFirstAttempt();
    mac().runFor(0.1);
    EXPECT_THAT(writes(), ElementsAre("AXFullScreen=true"));
    release();
    faults().answer("AXFullScreen", Point{1, 1});
    forgetEvents();
    mac().runFor(5);
    launchToFirstAttempt();
    mac().runFor(0.1);
    EXPECT_EQ(writes(), std::vector<std::string>{"AXFullScreen=true"});
}

TEST_F(Fullscreen, IsNotReadBack) {
    faults().fail(Operation::write, "AXFullScreen", accessibilitySuccess);
    launchToFirstAttempt();
    mac().runFor(10);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_FALSE(mac().desktop().windows().at(0).fullScreen);
    EXPECT_THAT(attemptTimes(), SizeIs(1));
}

TEST_F(Fullscreen, IsTriedOnTheFirstWindowOnly) {
    installChrome([](auto& chrome) {
        virtualmac::NewWindow second;
        second.title = "Seconda";
        second.after = 1.5;
        chrome.windows.push_back(second);
    });
    launchToFirstAttempt();
    mac().runFor(5);
    const auto windows = mac().desktop().windowsOf(*launcher().browserPID());
    ASSERT_THAT(windows, SizeIs(2));
    for (const auto& window : windows) EXPECT_EQ(window.fullScreen, window.title == "Seconda") << window.title;
}

TEST_F(Fullscreen, SurvivesAWindowThatDiesBetweenTwoCalls) {
    launchToFirstAttempt();
    faults().afterRead("AXFullScreen", [this] { mac().desktop().close(mac().desktop().windows().at(0).number); });
    mac().runFor(1);
    EXPECT_TRUE(logged("[FULLSCREEN] AX fallito (code: -25202) — riprovo tra 2s"));
    mac().runFor(3);
    EXPECT_TRUE(logged("[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"));
}

TEST_F(Fullscreen, SurvivesABrowserThatIsKilledBetweenAttempts) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(3);
    mac().processes().exit(*launcher().browserPID());
    mac().runFor(60);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_THAT(attemptTimes(), SizeIs(8));
}

TEST_F(Fullscreen, SurvivesABrowserThatDoesNotAnswer) {
    launchToFirstAttempt();
    mac().accessibility().setUnresponsive(*launcher().browserPID(), true);
    mac().runFor(100);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_EQ(count("[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"), 8u);
}

TEST_F(Fullscreen, IsTriedAgainTwoSecondsAfterAWindowThatHangsWasMadeLarge) {
    launchToFirstAttempt();
    const auto browser = *launcher().browserPID();
    faults().afterRead("AXFullScreen", [this, browser] { mac().accessibility().setUnresponsive(browser, true); });
    mac().runFor(30);
    const auto times = attemptTimes();
    ASSERT_GE(times.size(), 2u);
    // The three writes (full screen, position and size) wait for the browser.
    EXPECT_NEAR(times[1] - times[0], 3 * accessibilityTimeout + 2.5, 1e-6);
}

TEST_F(Fullscreen, IsTriedOnThoughTheActivationIsDeclined) {
    installChrome([](auto& chrome) { chrome.application.declinesActivation = true; });
    faults().fail(Operation::write, "AXFullScreen", accessibilityFailure, 2);
    launchToFirstAttempt();
    mac().runFor(30);
    EXPECT_THAT(attemptTimes(), SizeIs(3));
    EXPECT_TRUE(logged("[FULLSCREEN] ✅ Fullscreen attivato via AX"));
}

TEST_F(Fullscreen, WithoutAProcessEndsTheSeriesForGood) {
    make(true);
    attempt();
    mac().runFor(60);
    EXPECT_THAT(logLines(), ElementsAre("[FULLSCREEN] Tentativo 1/8..."));
    EXPECT_FALSE(launcher().isConfirmedFullscreen());
    EXPECT_FALSE(monitor().confirmed);
}

TEST_F(Fullscreen, OnceConfirmedIsNotTriedAgain) {
    launchToFirstAttempt();
    mac().runFor(5);
    forgetEvents();
    attempt();
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(Fullscreen, CancelledIsNotRetried) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(1);
    mac().onMain([this] { launcher().cancelFullscreenRetry(); });
    mac().runFor(60);
    EXPECT_THAT(attemptTimes(), SizeIs(1));
    EXPECT_EQ(count("[BROWSER] Fullscreen retry timer cancellato"), 1u);
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(Fullscreen, CancelledFromAnotherThreadIsNotRetried) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(1);
    mac().inBackground([this] { launcher().cancelFullscreenRetry(); });
    mac().runFor(60);
    EXPECT_THAT(attemptTimes(), SizeIs(1));
}

TEST_F(Fullscreen, CancelledLogsThoughNothingIsPending) {
    make();
    mac().onMain([this] { launcher().cancelFullscreenRetry(); });
    EXPECT_THAT(logLines(), ElementsAre("[BROWSER] Fullscreen retry timer cancellato"));
}

TEST_F(Fullscreen, CancelledAfterTheTimerHasFiredIsTriedOnceMoreAndRetriedAgain) {
    refuseFullScreen();
    launchToFirstAttempt();
    // The timer fires 2 seconds after the first attempt, and the next attempt follows half a second later.
    mac().runFor(2.2);
    mac().onMain([this] { launcher().cancelFullscreenRetry(); });
    mac().runFor(0.5);
    EXPECT_THAT(attemptTimes(), SizeIs(2));
    mac().runFor(60);
    EXPECT_THAT(attemptTimes(), SizeIs(8));
}

TEST_F(Fullscreen, IsNotTriedForALauncherThatIsGone) {
    refuseFullScreen();
    // While the timer is pending, and while the delayed attempt is.
    for (const double moment : {1.0, 2.2}) {
        launchToFirstAttempt();
        mac().runFor(moment);
        release();
        EXPECT_FALSE(isAlive());
        forgetEvents();
        mac().runFor(30);
        EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty()) << moment;
        EXPECT_EQ(mac().leftovers().timers, 0u);
    }
}

TEST_F(Fullscreen, HasOneRetryPendingHoweverOftenItIsTried) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(0.1);
    attempt();
    attempt();
    EXPECT_EQ(mac().leftovers().timers, 1u);
    mac().runFor(2.6);
    EXPECT_THAT(attemptTimes(), SizeIs(4));
}

TEST_F(Fullscreen, StandsStillUnderAnAlert) {
    refuseFullScreen();
    launchToFirstAttempt();
    mac().runFor(1);
    mac().postToMain([this] { computer().alerts.runModal({AlertStyle::warning, "?", "", {"OK"}}); });
    mac().runFor(30);
    EXPECT_THAT(attemptTimes(), SizeIs(1));
    participant().answerAlert("OK");
    mac().runFor(3);
    EXPECT_THAT(attemptTimes(), SizeIs(3));
}

}  // namespace
}  // namespace vantrel
