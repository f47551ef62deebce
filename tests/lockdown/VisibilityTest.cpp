#include <gmock/gmock.h>

#include "tests/lockdown/MonitorTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Visibility : public MonitorTest {};

constexpr const char* invisibleOnce = "[MONITOR] Finestra non visibile (1/6)";
constexpr const char* invisibleTwice = "[MONITOR] Finestra non visibile (2/6)";
constexpr const char* elsewhere = "[MONITOR] Finestra su altro Space — falso negativo ignorato, reset contatore";

TEST_F(Visibility, OfAWindowClosedInFullScreenEndsTheSessionOnTheSecondTick) {
    openInFullScreen();
    startMonitor();
    mac().desktop().close(window());
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce));
    EXPECT_THAT(ends(), IsEmpty());
    runTicks(1);
    EXPECT_THAT(monitorLines(),
                ElementsAre(invisibleOnce, invisibleTwice,
                            "[MONITOR] Finestra chiusa da fullscreen — fine sessione immediata", stopped));
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

TEST_F(Visibility, OfAWindowClosedBeforeFullScreenEndsTheSessionOnTheSecondTick) {
    openInWindow();
    startMonitor();
    mac().desktop().close(window());
    runTicks(5);
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce, invisibleTwice,
                                            "[MONITOR] Finestra chiusa con X — fine sessione immediata", stopped));
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

TEST_F(Visibility, AfterOneInvisibleTickResetsTheCounter) {
    openInWindow();
    startMonitor();
    for (int round = 0; round < 3; ++round) {
        mac().desktop().setMinimised(window(), true);
        runTicks(1);
        mac().desktop().setMinimised(window(), false);
        runTicks(1);
    }
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce, invisibleOnce, invisibleOnce));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Visibility, IsCountedAnewAtEachStart) {
    openInWindow();
    startMonitor();
    mac().desktop().close(window());
    runTicks(1);
    stopMonitor();
    mac().onMain([this] { monitor().startMonitoring(sharedLauncher()); });
    mac().runFor(0.1);
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce, stopped, invisibleOnce));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Visibility, OfAMinimisedWindowIsAFalseNegativeAgainAndAgain) {
    openInWindow();
    startMonitor();
    mac().desktop().setMinimised(window(), true);
    runTicks(4);
    EXPECT_THAT(monitorLines(),
                ElementsAre(invisibleOnce, invisibleTwice, elsewhere, invisibleOnce, invisibleTwice, elsewhere));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Visibility, OfAnUnconfirmedWindowOnAnotherSpaceIsAFalseNegative) {
    openInWindow();
    mac().spaces().addDesktop();
    startMonitor();
    mac().spaces().switchTo(1);
    mac().runFor(1);
    runTicks(2);
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce, invisibleTwice, elsewhere));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Visibility, OfAFullScreenWindowOnAnotherSpaceIsGiven) {
    openInFullScreen();
    startMonitor();
    // Without the notification of the change, which has a rule of its own.
    mac().windowList().withhold(virtualmac::WindowKey::isOnscreen);
    runTicks(4);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Visibility, OfAWindowThatIsNotLargeIsNotGiven) {
    openInWindow();
    startMonitor();
    // Exactly 0.6 of the display.
    mac().desktop().resize(window(), {864, 876});
    runTicks(2);
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce, invisibleTwice, elsewhere));
}

TEST_F(Visibility, OfATinyWindowCountsAsClosed) {
    openInWindow();
    startMonitor();
    mac().desktop().resize(window(), {200, 876});
    runTicks(2);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

TEST_F(Visibility, IsGivenByAnotherLargeWindowOfTheBrowser) {
    openInWindow();
    startMonitor();
    mac().processes().openWindow(chrome(), {"Altra", {{0, 0}, {1440, 900}}});
    mac().desktop().setMinimised(mac().desktop().windowsOf(chrome()).at(1).number, true);
    runTicks(3);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Visibility, IsNotGivenByAWindowOfAnotherApplication) {
    openInFullScreen();
    startMonitor();
    virtualmac::ApplicationDescription description;
    description.name = "Altra";
    mac().processes().openWindow(mac().processes().add(description), {"Altra", {{0, 0}, {1440, 900}}});
    mac().desktop().close(window());
    runTicks(2);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

TEST_F(Visibility, WithoutAWindowListEndsTheSession) {
    openInFullScreen();
    startMonitor();
    mac().windowList().setFailing(true);
    runTicks(2);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

class MissingKey : public Visibility, public testing::WithParamInterface<virtualmac::WindowKey> {};

TEST_P(MissingKey, MakesAWindowNotQualify) {
    openInFullScreen();
    startMonitor();
    mac().windowList().withhold(GetParam());
    runTicks(2);
    EXPECT_THAT(ends(), ElementsAre(SessionEndReason::meetWindowClosed));
}

INSTANTIATE_TEST_SUITE_P(Each, MissingKey,
                         testing::Values(virtualmac::WindowKey::ownerPID, virtualmac::WindowKey::layer,
                                         virtualmac::WindowKey::bounds));

TEST_F(Visibility, IsMeasuredAgainstTheMainScreen) {
    openInWindow();
    auto displays = mac().screens().displays();
    displays.screens.push_back({"Grande", {{1440, 0}, {2880, 1800}}});
    displays.main = 1;
    mac().screens().change(displays);
    startMonitor();
    runTicks(2);
    EXPECT_THAT(monitorLines(), ElementsAre(invisibleOnce, invisibleTwice, elsewhere));
}

/// Without a display, windows are compared with one of 1440 × 900 points.
class VisibilityWithoutADisplay : public Visibility {
  protected:
    /// The lines of two ticks with a window of that size.
    std::vector<std::string> linesOver(const Size& size) {
        openInWindow();
        startMonitor();
        auto displays = mac().screens().displays();
        displays.screens.clear();
        mac().screens().change(displays);
        EXPECT_TRUE(mac().desktop().resize(window(), size));
        runTicks(2);
        return monitorLines();
    }
};

TEST_F(VisibilityWithoutADisplay, IsGivenAboveThreeFifths) {
    EXPECT_THAT(linesOver({864.001, 540.001}), IsEmpty());
}

TEST_F(VisibilityWithoutADisplay, IsNotGivenAtThreeFifthsOfItsWidth) {
    EXPECT_THAT(linesOver({864, 876}), ElementsAre(invisibleOnce, invisibleTwice, elsewhere));
}

TEST_F(VisibilityWithoutADisplay, IsNotGivenAtThreeFifthsOfItsHeight) {
    EXPECT_THAT(linesOver({1440, 540}), ElementsAre(invisibleOnce, invisibleTwice, elsewhere));
}

}  // namespace
}  // namespace vantrel
