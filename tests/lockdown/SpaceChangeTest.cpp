#include <gmock/gmock.h>

#include "tests/lockdown/MonitorTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Direction = virtualmac::VirtualSpaces::Direction;

class SpaceChange : public MonitorTest {
  protected:
    static constexpr const char* here = "[MONITOR] Space cambiato ma Meet è sullo Space corrente — OK";
    static constexpr const char* away =
        "[MONITOR] ⚠️ Utente cambiato a Space diverso da Meet — kill browser e fine sessione";

    std::string killed(ProcessIdentifier process) {
        return "[MONITOR] Kill browser PID " + std::to_string(process) + ": ✅ OK";
    }
    std::string confirmed(ProcessIdentifier process) {
        return "[MONITOR] Kill browser: processo " + std::to_string(process) + " confermato terminato";
    }
    double timeOfChange() { return events("space-changed").at(0).time; }
};

TEST_F(SpaceChange, AwayFromTheMeetingEndsTheSessionAndKillsTheBrowser) {
    openInFullScreen();
    startMonitor();
    const auto process = chrome();
    // The flags already tell the new state when the notice is looked into.
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.29);
    EXPECT_THAT(ends(), IsEmpty());
    mac().runFor(0.02);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
    EXPECT_NEAR(timeOf(away) - timeOfChange(), 0.3, 1e-6);
    EXPECT_FALSE(monitor().isActive());
    mac().runFor(3);
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped, killed(process), confirmed(process)));
    EXPECT_FALSE(isRunning(process));
}

TEST_F(SpaceChange, IsLookedIntoWhileTheFlagsTellTheOldSpace) {
    openInFullScreen();
    startMonitor();
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.4);
    // The window is no longer in sight, but the system still says so.
    EXPECT_THAT(monitorLines(), ElementsAre(here));
    mac().runFor(10);
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(SpaceChange, BackToTheMeetingWithinTheDelayIsFine) {
    openInFullScreen();
    startMonitor();
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.1);
    mac().spaces().swipe(Direction::right);
    mac().runFor(2);
    EXPECT_THAT(monitorLines(), ElementsAre(here, here));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(SpaceChange, BeforeFullScreenIsConfirmedIsIgnored) {
    openInWindow();
    mac().spaces().addDesktop();
    startMonitor();
    mac().spaces().switchTo(1);
    mac().runFor(1.2);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(SpaceChange, ToConfirmedFullScreenIsIgnoredUntilItIsConfirmed) {
    openInWindow();
    startMonitor();
    mac().desktop().setFullScreen(window(), true);
    mac().runFor(0.2);
    // Confirmed only after the notice has been ignored.
    mac().onMain([this] { monitor().setFullscreenConfirmed(true); });
    mac().runFor(0.5);
    EXPECT_THAT(monitorLines(), Not(Contains(here)));
}

TEST_F(SpaceChange, OfAMonitorStoppedMeanwhileIsIgnored) {
    openInFullScreen();
    startMonitor();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.1);
    stopMonitor();
    mac().runFor(5);
    EXPECT_THAT(monitorLines(), ElementsAre(stopped));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(SpaceChange, OfAMonitorNoLongerConfirmedIsIgnored) {
    openInFullScreen();
    startMonitor();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.1);
    mac().onMain([this] { monitor().setFullscreenConfirmed(false); });
    mac().runFor(0.5);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(SpaceChange, OfAReleasedMonitorIsIgnored) {
    openInFullScreen();
    startMonitor();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.1);
    releaseMonitor();
    mac().runFor(5);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(SpaceChange, WithAWindowThatIsGoneIsTheTicksMatter) {
    openInFullScreen();
    const auto process = chrome();
    startMonitor();
    // Closing a full-screen window brings the display back to a desktop, with the notice.
    mac().desktop().close(window());
    mac().runFor(1);
    EXPECT_THAT(monitorLines(), IsEmpty());
    runTicks(2);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
    EXPECT_THAT(monitorLines(), Contains("[MONITOR] Finestra chiusa da fullscreen — fine sessione immediata"));
    EXPECT_TRUE(isRunning(process));
}

TEST_F(SpaceChange, OfALauncherThatIsGoneIsIgnored) {
    openInFullScreen();
    startMonitor();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().spaces().swipe(Direction::left);
    release();
    mac().runFor(1);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(SpaceChange, TwiceWithinTheDelayEndsTheSessionOnce) {
    openInFullScreen();
    mac().spaces().addDesktop();
    startMonitor();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    mac().spaces().switchTo(0);
    mac().runFor(0.1);
    mac().spaces().switchTo(1);
    mac().runFor(5);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
    EXPECT_EQ(count(away), 1u);
}

TEST_F(SpaceChange, DoesNotWaitForTheKill) {
    installChrome([](auto& chrome) {
        chrome.application.ignoresForceTerminate = true;
        chrome.application.killDelay = 60;
    });
    launch();
    mac().runFor(6);
    startMonitor();
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    const auto process = chrome();
    double end = 0;
    mac().onMain([&] { monitor().onSessionEnded = [&](SessionEndReason) { end = mac().now(); }; });
    mac().spaces().swipe(Direction::left);
    mac().runFor(5);
    EXPECT_GE(timeOf(confirmed(process)) - end, 1.5);
}

}  // namespace
}  // namespace vantrel
