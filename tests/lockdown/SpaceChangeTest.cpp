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
    /// The flags already show the new state when the notification is handled.
    void leave() {
        mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
        mac().spaces().swipe(Direction::left);
    }
    double timeOfChange() { return events(SystemEvent::spaceChanged).at(0).time; }
};

TEST_F(SpaceChange, AwayFromTheMeetingEndsTheSessionAndKillsTheBrowser) {
    openInFullScreen();
    startMonitor();
    const auto process = chrome();
    leave();
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
    // The window is no longer visible, but the system still lists it so.
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
    // Confirmed only after the notification has been ignored.
    mac().onMain([this] { monitor().setFullscreenConfirmed(true); });
    mac().runFor(0.5);
    EXPECT_THAT(monitorLines(), Not(Contains(here)));
}

TEST_F(SpaceChange, OfAMonitorStoppedMeanwhileIsIgnored) {
    openInFullScreen();
    startMonitor();
    leave();
    mac().runFor(0.1);
    stopMonitor();
    mac().runFor(5);
    EXPECT_THAT(monitorLines(), ElementsAre(stopped));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(SpaceChange, OfAMonitorNoLongerConfirmedIsIgnored) {
    openInFullScreen();
    startMonitor();
    leave();
    mac().runFor(0.1);
    mac().onMain([this] { monitor().setFullscreenConfirmed(false); });
    mac().runFor(0.5);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(SpaceChange, OfAReleasedMonitorIsIgnored) {
    openInFullScreen();
    startMonitor();
    leave();
    mac().runFor(0.1);
    releaseMonitor();
    mac().runFor(5);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(SpaceChange, WithAWindowThatIsGoneIsTheTicksMatter) {
    openInFullScreen();
    const auto process = chrome();
    startMonitor();
    // Closing a full-screen window returns the display to a desktop, with the notification.
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
    leave();
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

TEST_F(SpaceChange, StopsTheMonitorBeforeItTells) {
    openInFullScreen();
    startMonitor();
    std::vector<bool> active;
    mac().onMain([&] { monitor().onSessionEnded = [&](SessionEndReason) { active.push_back(monitor().isActive()); }; });
    leave();
    mac().runFor(1);
    EXPECT_THAT(active, ElementsAre(false));
}

TEST_F(SpaceChange, WithNobodyToTellKillsTheBrowserAllTheSame) {
    openInFullScreen();
    startMonitor();
    const auto process = chrome();
    mac().onMain([this] { monitor().onSessionEnded = nullptr; });
    leave();
    mac().runFor(3);
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped, killed(process), confirmed(process)));
    EXPECT_FALSE(isRunning(process));
    EXPECT_FALSE(monitor().isActive());
}

TEST_F(SpaceChange, OfAMonitorReleasedByTheOneItTellsKillsNothing) {
    if (virtualmac::isFreeRunning()) GTEST_SKIP() << "The kill may then begin before the monitor is gone.";
    openInFullScreen();
    std::shared_ptr<WindowMonitorService> own;
    mac().onMain([&] {
        own = makeMonitor();
        own->onSessionEnded = [&](SessionEndReason) { own.reset(); };
        own->startMonitoring(sharedLauncher());
    });
    mac().runFor(0.1);
    const auto process = chrome();
    leave();
    mac().runFor(3);
    EXPECT_EQ(own, nullptr);
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped));
    EXPECT_TRUE(isRunning(process));
}

TEST_F(SpaceChange, DoesNotKeepTheMonitorForTheKill) {
    installChrome([](auto& chrome) { chrome.application.ignoresForceTerminate = true; });
    launch();
    mac().runFor(6);
    std::shared_ptr<WindowMonitorService> own;
    mac().onMain([&] {
        own = makeMonitor();
        own->startMonitoring(sharedLauncher());
    });
    mac().runFor(0.1);
    const auto process = chrome();
    leave();
    mac().runFor(0.8);
    const std::weak_ptr<WindowMonitorService> weak = own;
    mac().onMain([&] { own.reset(); });
    EXPECT_TRUE(weak.expired());
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped, killed(process)));
    mac().runFor(3);
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped, killed(process), confirmed(process)));
}

TEST_F(SpaceChange, DropsTheLaunchersRetryBeforeTheKill) {
    openInFullScreen();
    startMonitor();
    const auto process = chrome();
    leave();
    mac().runFor(3);
    EXPECT_THAT(logLines(),
                ElementsAre("[MONITOR] Fullscreen già confermato all'avvio", started, away, stopped,
                            "[BROWSER] Fullscreen retry timer cancellato", killed(process), confirmed(process)));
}

TEST_F(SpaceChange, OfAProcessThatIsNoApplicationFindsNoMeetingHere) {
    openNothing();
    virtualmac::ApplicationDescription description;
    description.name = "Riunione";
    description.isApplication = false;
    const auto process = mac().processes().add(description);
    mac().processes().openWindow(process, {"Riunione", {{0, 0}, {1440, 900}}});
    mac().spaces().addDesktop();
    mac().onMain([&] { launcher().adoptRunningApplication(mac().processes().find(process)); });
    startMonitor();
    mac().onMain([this] { monitor().setFullscreenConfirmed(true); });
    mac().spaces().switchTo(1);
    mac().spaces().switchTo(0);
    mac().runFor(0.35);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
    mac().runFor(3);
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped,
                                            "[MONITOR] Kill browser PID " + std::to_string(process) +
                                                ": NSRunningApplication non trovato, SIGKILL diretto",
                                            confirmed(process)));
}

/// The flags follow by themselves.
class SpaceChangeInTime : public SpaceChange {};

TEST_F(SpaceChangeInTime, AwayFromTheMeetingEndsTheSession) {
    openInFullScreen();
    mac().desktop().setFlagDelay(0.1);
    startMonitor();
    const auto process = chrome();
    mac().spaces().swipe(Direction::left);
    mac().runFor(5);
    EXPECT_THAT(monitorLines(), ElementsAre(away, stopped, killed(process), confirmed(process)));
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
    EXPECT_FALSE(isRunning(process));
}

TEST_F(SpaceChangeInTime, BackToTheMeetingWithinTheDelayIsFine) {
    openInFullScreen();
    mac().desktop().setFlagDelay(0.05);
    startMonitor();
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.1);
    mac().spaces().swipe(Direction::right);
    mac().runFor(2);
    EXPECT_THAT(monitorLines(), ElementsAre(here, here));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(SpaceChangeInTime, BackToTheMeetingAfterTheDelayIsTooLate) {
    openInFullScreen();
    mac().desktop().setFlagDelay(0.05);
    startMonitor();
    mac().spaces().swipe(Direction::left);
    mac().runFor(0.31);
    mac().spaces().swipe(Direction::right);
    mac().runFor(2);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

/// The Space change of the launcher's own full screen, however long the flags take to follow.
class OwnSpaceChange : public SpaceChange {
  protected:
    std::vector<std::string> linesWithFlagDelay(double seconds) {
        openInWindow();
        startMonitor();
        mac().desktop().setFlagDelay(seconds);
        faults().clear();
        mac().onMain([this] { launcher().attemptFullscreen(); });
        mac().runFor(3);
        EXPECT_THAT(ends(), IsEmpty());
        EXPECT_TRUE(monitor().isActive());
        return monitorLines();
    }
};

TEST_F(OwnSpaceChange, IsFineWhileTheFlagsTellTheOldSpace) {
    EXPECT_THAT(linesWithFlagDelay(0.56), ElementsAre("[MONITOR] Fullscreen confermato", here));
}

TEST_F(OwnSpaceChange, IsFineOnceTheFlagsTellTheNewSpace) {
    EXPECT_THAT(linesWithFlagDelay(0.1), ElementsAre("[MONITOR] Fullscreen confermato", here));
}

}  // namespace
}  // namespace vantrel
