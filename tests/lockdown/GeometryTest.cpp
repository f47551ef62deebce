#include <gmock/gmock.h>

#include "tests/lockdown/MonitorTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Operation = virtualmac::AccessibilityFaults::Operation;

/// The window has the right place and size, or is put back. The launcher's attempt half a second later shows in its log
/// lines.
class GeometryTest : public MonitorTest {
  protected:
    /// Gives the window this place and size for Accessibility, whatever the desktop shows.
    void place(const Point& position, const Size& size) {
        faults().clear();
        faults().answer("AXPosition", position);
        faults().answer("AXSize", size);
    }
    std::size_t attempts() const { return lines("[FULLSCREEN] Tentativo").size(); }
};

class Geometry : public GeometryTest {
  protected:
    void SetUp() override {
        openInWindow();
        startMonitor();
    }
};

TEST_F(Geometry, OfAWindowThatFillsTheDisplayIsLeftAlone) {
    place({0, 0}, {1440, 900});
    runTicks(3);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(writes(), IsEmpty());
}

TEST_F(Geometry, OfAMovedWindowIsRestored) {
    place({100.9, -60.9}, {1440, 900});
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra spostata pos:(100,-60) — ripristino"));
    EXPECT_THAT(writes(), ElementsAre("AXPosition=0 0", "AXSize=1440 900"));
}

TEST_F(Geometry, OfAShrunkWindowIsRestored) {
    place({0, 0}, {1295.9, 719.9});
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra ridimensionata (89%×79%) — ripristino"));
    EXPECT_THAT(writes(), ElementsAre("AXPosition=0 0", "AXSize=1440 900"));
}

TEST_F(Geometry, OfAMovedAndShrunkWindowIsToldInTwoLines) {
    place({100, 100}, {720, 450});
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra spostata pos:(100,100) — ripristino",
                                            "[MONITOR] Finestra ridimensionata (50%×50%) — ripristino"));
    EXPECT_THAT(writes(), SizeIs(2));
}

TEST_F(Geometry, WithinOnePercentAndAtNineAndEightTenthsIsLeftAlone) {
    place({14.4, 9}, {1296, 720});
    runTicks(3);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Geometry, IsTriedToMakeFullScreenHalfASecondAfterTheRepair) {
    place({100, 100}, {1440, 900});
    runTicks(1);
    EXPECT_EQ(attempts(), 0u);
    const double tick = events(ElementEvent::set).at(0).time;
    mac().runFor(0.5);
    EXPECT_EQ(attempts(), 1u);
    double attempt = 0;
    for (const auto& event : events(ClientEvent::log)) {
        if (event.text.starts_with("[FULLSCREEN] Tentativo")) attempt = event.time;
    }
    EXPECT_NEAR(attempt - tick, 0.5, 1e-6);
}

TEST_F(Geometry, ActivatesTheBrowserWithTheRepair) {
    place({100, 100}, {1440, 900});
    runTicks(1);
    EXPECT_THAT(texts(ApplicationEvent::activate), ElementsAre("Google Chrome"));
}

TEST_F(Geometry, ActivatesTheBrowserWithoutOptions) {
    place({100, 100}, {1440, 900});
    runTicks(1);
    EXPECT_THAT(activationOptions(), ElementsAre("0"));
}

TEST_F(Geometry, IsToldThenRepairedThenActivated) {
    place({100, 100}, {720, 450});
    forgetEvents();
    runTicks(1);
    std::vector<std::string> order;
    for (const auto& event : events()) {
        if (event.kind == ClientEvent::log) order.push_back(event.text);
        if (event.kind == ElementEvent::set) order.push_back(event.text + "=" + event.field(Field::value));
        if (event.kind == ApplicationEvent::activate) order.push_back("activate " + event.text);
    }
    EXPECT_THAT(order, ElementsAre("[MONITOR] Finestra spostata pos:(100,100) — ripristino",
                                   "[MONITOR] Finestra ridimensionata (50%×50%) — ripristino", "AXPosition=0 0",
                                   "AXSize=1440 900", "activate Google Chrome"));
}

TEST_F(Geometry, IsTriedToMakeFullScreenThoughTheMonitorHasStoppedMeanwhile) {
    place({100, 100}, {1440, 900});
    runTicks(1);
    stopMonitor();
    mac().runFor(0.5);
    EXPECT_EQ(attempts(), 1u);
}

TEST_F(Geometry, CountsAPositionThatCannotBeReadAsZero) {
    faults().clear();
    faults().fail(Operation::read, "AXPosition", accessibilityFailure);
    faults().answer("AXSize", Size{1440, 900});
    runTicks(1);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Geometry, CountsASizeThatCannotBeReadAsZero) {
    faults().fail(Operation::read, "AXSize", accessibilityFailure);
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra ridimensionata (0%×0%) — ripristino"));
}

TEST_F(Geometry, CountsAPositionOfAnotherTypeAsZero) {
    faults().clear();
    faults().answer("AXPosition", true);
    faults().answer("AXSize", Size{1440, 900});
    runTicks(1);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Geometry, IgnoresWritesThatFail) {
    place({100, 100}, {720, 450});
    faults().fail(Operation::write, "AXPosition", accessibilityFailure);
    faults().fail(Operation::write, "AXSize", accessibilityFailure);
    runTicks(2);
    EXPECT_THAT(monitorLines(), SizeIs(4));
    EXPECT_THAT(ends(), IsEmpty());
}

TEST_F(Geometry, IsNotCheckedWithoutAList) {
    place({100, 100}, {720, 450});
    faults().fail(Operation::read, "AXWindows", accessibilityFailure);
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(violations(), ElementsAre("Note"));
}

TEST_F(Geometry, IsNotCheckedOfAnEmptyList) {
    place({100, 100}, {720, 450});
    faults().answer("AXWindows", std::vector<std::shared_ptr<AccessibilityElement>>());
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(violations(), ElementsAre("Note"));
}

TEST_F(Geometry, IsNotCheckedWithoutAMainScreen) {
    place({100, 100}, {720, 450});
    auto displays = mac().screens().displays();
    displays.screens.clear();
    mac().screens().change(displays);
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(violations(), ElementsAre("Note"));
}

TEST_F(Geometry, OfAWindowInFullScreenIsNotChecked) {
    place({100, 100}, {720, 450});
    faults().answer("AXFullScreen", true);
    runTicks(1);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Geometry, OfAnotherWindowInFullScreenStandsForAll) {
    mac().processes().openWindow(chrome(), {"Altra", {{300, 300}, {1000, 500}}});
    place({100, 100}, {720, 450});
    faults().answer("AXFullScreen", false, 1);
    faults().answer("AXFullScreen", true);
    runTicks(1);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Geometry, OfAWindowThatDoesNotTellItsStateIsChecked) {
    place({100, 100}, {1440, 900});
    faults().fail(Operation::read, "AXFullScreen", accessibilityFailure);
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra spostata pos:(100,100) — ripristino"));
}

TEST_F(Geometry, IsCheckedOfTheFirstWindow) {
    faults().clear();
    mac().processes().openWindow(chrome(), {"Altra", {{300, 300}, {1000, 500}}});
    runTicks(1);
    EXPECT_THAT(monitorLines(), Contains("[MONITOR] Finestra spostata pos:(300,300) — ripristino"));
}

TEST_F(Geometry, IsFollowedByTheFocusCheckInTheSameTick) {
    place({100, 100}, {1440, 900});
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra spostata pos:(100,100) — ripristino",
                                            "[MONITOR] Focus su Note — riporto Google Chrome in primo piano"));
}

TEST_F(Geometry, DoesNotAttemptFullScreenForALauncherThatIsGoneByThen) {
    place({100, 100}, {1440, 900});
    runTicks(1);
    release();
    mac().runFor(1);
    EXPECT_EQ(attempts(), 0u);
}

TEST_F(Geometry, OfAConfirmedFullScreenIsNotCheckedWhereNoWindowSaysSo) {
    mac().onMain([this] { monitor().setFullscreenConfirmed(true); });
    place({100, 100}, {720, 450});
    faults().fail(Operation::read, "AXFocusedWindow", accessibilityFailure);
    runTicks(2);
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(monitorLines(), IsEmpty());
}

/// The position counts from the top left of the primary display, the screen's origin from its bottom left. They are
/// compared and written without conversion.
class GeometryOnAnotherDisplay : public GeometryTest {};

TEST_F(GeometryOnAnotherDisplay, TakesTheDisplaysOriginAsItStands) {
    openInWindow();
    auto displays = mac().screens().displays();
    displays.screens.push_back({"Sopra", {{-200, 900}, {1920, 1080}}});
    displays.main = 1;
    mac().screens().change(displays);
    mac().desktop().resize(window(), {1920, 1080});
    place({-200, -1080}, {1920, 1080});
    startMonitor();
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Finestra spostata pos:(-200,-1080) — ripristino"));
    EXPECT_THAT(writes(), ElementsAre("AXPosition=-200 900", "AXSize=1920 1080"));
}

/// The launcher knows only the process: its application was listed too late.
class GeometryWithoutAnApplication : public GeometryTest {};

TEST_F(GeometryWithoutAnApplication, ActivatesNothingAndIsTriedToMakeFullScreenAllTheSame) {
    installChrome([](auto& chrome) {
        chrome.windows.at(0).frame = {{0, 24}, {1440, 876}};
        chrome.appearsAfter = 2.5;
    });
    faults().fail(Operation::write, "AXFullScreen", accessibilityFailure, 1);
    launch();
    mac().runFor(3.6);
    launcher().cancelFullscreenRetry();
    mac().runFor(1);
    ASSERT_FALSE(launcher().isConfirmedFullscreen());
    ASSERT_TRUE(launcher().browserPID());
    ASSERT_EQ(launcher().browserApp(), nullptr);
    forgetEvents();
    startMonitor();
    place({100, 100}, {1440, 900});
    runTicks(1);
    EXPECT_THAT(writes(), ElementsAre("AXPosition=0 0", "AXSize=1440 900"));
    EXPECT_THAT(texts(ApplicationEvent::activate), IsEmpty());
    mac().runFor(0.5);
    EXPECT_EQ(attempts(), 1u);
}

}  // namespace
}  // namespace vantrel
