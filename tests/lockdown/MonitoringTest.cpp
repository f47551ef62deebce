#include <gmock/gmock.h>

#include "tests/lockdown/MonitorTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// Start, end, the browser's process and the grace period.
class Monitoring : public MonitorTest {};

std::string waiting(int ticks) {
    return "[MONITOR] Browser non trovato — grace period attivo (" + std::to_string(ticks) + " tick rimanenti)";
}

TEST_F(Monitoring, SaysThatFullScreenWasConfirmedBeforeItStarted) {
    openInFullScreen();
    startMonitor();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre("[MONITOR] Fullscreen già confermato all'avvio", started));
}

TEST_F(Monitoring, OfAnUnconfirmedWindowStartsWithoutThatLine) {
    openInWindow();
    startMonitor();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre(started));
}

TEST_F(Monitoring, IsStartedOnce) {
    openInFullScreen();
    startMonitor();
    mac().onMain([this] { monitor().startMonitoring(sharedLauncher()); });
    EXPECT_EQ(count(started), 1u);
    EXPECT_EQ(mac().leftovers().timers, 1u);
    EXPECT_EQ(mac().leftovers().observers, 1u);
}

TEST_F(Monitoring, IsStoppedOnceAndLeavesNothing) {
    openInFullScreen();
    startMonitor();
    stopMonitor();
    stopMonitor();
    EXPECT_EQ(count(stopped), 1u);
    EXPECT_FALSE(monitor().isActive());
    EXPECT_EQ(mac().leftovers().timers, 0u);
    EXPECT_EQ(mac().leftovers().observers, 0u);
    mac().processes().exit(chrome());
    mac().runFor(20);
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Monitoring, ThatWasNeverStartedIsStoppedSilently) {
    mac().onMain([this] {
        const auto never = makeMonitor();
        never->stopMonitoring();
        EXPECT_FALSE(never->isActive());
    });
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(Monitoring, ForgetsAConfirmedFullScreenAtEachStart) {
    openInWindow();
    startMonitor();
    mac().onMain([this] {
        monitor().setFullscreenConfirmed(true);
        monitor().stopMonitoring();
        monitor().startMonitoring(sharedLauncher());
    });
    // A focused window outside full screen would be the wrong one.
    runTicks(2);
    EXPECT_THAT(monitorLines(), ElementsAre(stopped));
}

TEST_F(Monitoring, ReleasedWhileActiveLeavesNothing) {
    openInFullScreen();
    startMonitor();
    releaseMonitor();
    mac().runFor(20);
    EXPECT_EQ(mac().leftovers().timers, 0u);
    EXPECT_EQ(mac().leftovers().observers, 0u);
    EXPECT_EQ(count(stopped), 0u);
}

TEST_F(Monitoring, OfAFaultlessMeetingSaysNothing) {
    openInFullScreen();
    startMonitor();
    runTicks(40);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(violations(), IsEmpty());
    EXPECT_THAT(ends(), IsEmpty());
    EXPECT_THAT(writes(), IsEmpty());
}

TEST_F(Monitoring, OfAReleasedLauncherDoesNothing) {
    openInFullScreen();
    startMonitor();
    mac().processes().exit(chrome());
    release();
    runTicks(20);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Monitoring, WaitsEightTicksForABrowserThatIsNeverFoundAndEndsOnTheNinth) {
    openNothing();
    const double start = mac().now();
    startMonitor();
    runTicks(8);
    EXPECT_THAT(monitorLines(), ElementsAre(waiting(7), waiting(6), waiting(5), waiting(4), waiting(3), waiting(2),
                                            waiting(1), waiting(0)));
    EXPECT_THAT(ends(), IsEmpty());
    runTicks(1);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::browserCrashed));
    EXPECT_NEAR(timeOf("[MONITOR] Browser non in esecuzione — fine sessione") - start, 13.5, 1e-6);
    EXPECT_FALSE(monitor().isActive());
    runTicks(20);
    EXPECT_EQ(ends().size(), 1u);
}

TEST_F(Monitoring, StopsItselfBeforeItTellsOfAnEnd) {
    openInFullScreen();
    startMonitor();
    bool wasActive = true;
    mac().onMain([&] { monitor().onSessionEnded = [&](SessionEndReason) { wasActive = monitor().isActive(); }; });
    runTicks();
    mac().processes().exit(chrome());
    runTicks();
    EXPECT_FALSE(wasActive);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Google Chrome non in esecuzione — fine sessione", stopped));
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(Monitoring, WithNobodyToTellStopsItselfAllTheSame) {
    openInFullScreen();
    startMonitor();
    mac().onMain([this] { monitor().onSessionEnded = nullptr; });
    runTicks();
    mac().processes().exit(chrome());
    runTicks();
    EXPECT_FALSE(monitor().isActive());
}

TEST_F(Monitoring, EndsOnTheVeryNextTickOnceTheBrowserHasBeenSeen) {
    openInFullScreen();
    startMonitor();
    runTicks(1);
    mac().processes().exit(chrome());
    runTicks(1);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::browserCrashed));
}

TEST_F(Monitoring, GivesTheGraceAnewAtEachStart) {
    openInFullScreen();
    startMonitor();
    runTicks(1);
    stopMonitor();
    mac().processes().exit(chrome());
    forgetEvents();
    mac().onMain([this] { monitor().startMonitoring(sharedLauncher()); });
    runTicks(3);
    EXPECT_THAT(ends(), IsEmpty());
    EXPECT_THAT(monitorLines(), Contains(waiting(5)));
}

TEST_F(Monitoring, TakesOverTheBrowsersNewProcessDuringTheGracePeriod) {
    openInFullScreen();
    const auto before = chrome();
    startMonitor();
    mac().processes().exit(before);
    runTicks(2);
    EXPECT_THAT(monitorLines(), ElementsAre(waiting(7), waiting(6)));
    const auto after = mac().processes().start(virtualmac::chromePath);
    mac().runFor(1.4);
    EXPECT_THAT(monitorLines(),
                ElementsAre(waiting(7), waiting(6),
                            "[MONITOR] PID recuperato per bundle ID durante grace period (5 tick rimanenti)"));
    EXPECT_EQ(chrome(), after);
    EXPECT_EQ(launcher().browserApp()->processIdentifier(), after);
    mac().processes().exit(after);
    runTicks(1);
    // The process was taken over, but no tick has seen it alive yet: the grace period continues.
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Monitoring, TakesOverTheFirstOfSeveralProcesses) {
    openInFullScreen();
    startMonitor();
    mac().processes().exit(chrome());
    virtualmac::ApplicationDescription description;
    description.name = "Google Chrome";
    description.bundleIdentifier = "com.google.Chrome";
    const auto first = mac().processes().add(description);
    mac().processes().add(description);
    runTicks(1);
    EXPECT_THAT(monitorLines(),
                ElementsAre("[MONITOR] PID recuperato per bundle ID durante grace period (7 tick rimanenti)"));
    EXPECT_EQ(chrome(), first);
}

TEST_F(Monitoring, DoesNotTakeOverAnotherBrowser) {
    openInFullScreen();
    startMonitor();
    mac().processes().exit(chrome());
    mac().processes().start(virtualmac::safariPath);
    runTicks(3);
    EXPECT_THAT(monitorLines(), ElementsAre(waiting(7), waiting(6), waiting(5)));
}

TEST_F(Monitoring, WithoutADetectedBrowserTakesNothingOver) {
    installChrome();
    openNothing();
    startMonitor();
    mac().processes().start(virtualmac::chromePath);
    runTicks(3);
    EXPECT_THAT(monitorLines(), ElementsAre(waiting(7), waiting(6), waiting(5)));
}

TEST_F(Monitoring, PausesWhileAnAlertIsUp) {
    openNothing();
    startMonitor();
    mac().postToMain([this] {
        Alert alert;
        alert.messageText = "Un momento";
        alert.buttons = {"OK"};
        computer().alerts.runModal(alert);
    });
    runTicks(20);
    EXPECT_THAT(monitorLines(), IsEmpty());
    participant().answerAlert("OK");
    runTicks(2);
    EXPECT_FALSE(monitorLines().empty());
}

}  // namespace
}  // namespace vantrel
